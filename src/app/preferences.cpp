#include "app/preferences.h"

#include <QApplication>
#include <cmath>

#include "app/setting_notices.h"
#include "app/shell_notices.h"
#include "forms/frm_main.h"
#include "forms/texts.h"
#include "runtime/arithmetic.h"
#include "runtime/events.h"
#include "runtime/guarded.h"
#include "runtime/service_code.h"
#include "runtime/system_reason.h"
#include "settings/update_statement.h"

namespace tarnwick::app {

namespace {

QString percentText(double percent) { return QString::number(std::round(percent)) + u'%'; }

// Like ticked, but false if the stored value is greater than 1 before rounding.
bool tickedAtMost1(const settings::Record& row, const QString& column) {
    return row.real(column) <= 1.0 && row.ticked(column);
}

}  // namespace

Preferences::Preferences(forms::frmMain& form, const Services& services,
                         std::function<void()> opened)
    : form_(form), services_(services), opened_(std::move(opened)) {
    connectPage();
    form_.lbRecalcTimer->installEventFilter(this);
}

// Turning an option on counts as a click, whether by mouse, key or code. The same is true for the
// slider's scroll.
void Preferences::connectPage() {
    const runtime::FailurePath& failure = services_.failure;
    const auto option = [&](QButtonGroup* group, auto handler) {
        runtime::onEvent(failure, group, &QButtonGroup::idToggled, this,
                         [this, handler](int, bool on) {
                             if (on) (this->*handler)();
                         });
    };
    const auto button = [&](QPushButton* command, auto handler) {
        runtime::onEvent(failure, command, &QPushButton::clicked, this,
                         [this, handler] { (this->*handler)(); });
    };
    runtime::onEvent(failure, form_.mnuPreferences, &QAction::triggered, this,
                     [this] { mnuPreferences_Click(); });
    button(form_.cbPreferencesSave, &Preferences::cbPreferencesSave_Click);
    button(form_.cbPreferencesIgnore, &Preferences::cbPreferencesIgnore_Click);
    button(form_.cbPreferencesLoad, &Preferences::PreferencesLoad);
    option(form_.opSourceFileFormatGroup, &Preferences::opSourceFileFormat_Click);
    option(form_.OpScriptFormatGroup, &Preferences::OpScriptFormat_Click);
    runtime::onEvent(failure, form_.slScaling, &QSlider::valueChanged, this,
                     [this] { slScaling_Scroll(); });
}

void Preferences::PreferencesLoad() {
    runtime::guarded(services_.failure, u"frmMain.PreferencesLoad: ", [&](runtime::Line& line) {
        settings::SettingsDatabase& database = services_.database;
        line(10);
        const settings::Access access(database, services_.state.vsConnection);
        line(20);
        showSegmentation(database.Read(u"SELECT * FROM Admin WHERE F1 = 17"_qs));
        line(30);
        const settings::Record row18 = database.Read(u"SELECT * FROM Admin WHERE F1 = 18"_qs);
        line(40);
        showScriptAndWindow(row18);
        line(50);
        showScriptFormat(row18);
        line(60);
        showScale(row18);
        line(70);
        showNaming(database.Read(u"SELECT * FROM Admin WHERE F1 = 19"_qs));
        line(80);
        database.Close();
        line(90);
        database.Release();
    });
    tellOfSettings();
}

// Tells of values in the controls that would end a load early.
void Preferences::tellOfSettings() const {
    const bool onlyRows =
        form_.OpScriptFormat[1]->isChecked() && form_.chImportSpecifiedRows->isChecked();
    for (const platform::Notice& notice :
         noticesOf({.duration = form_.txbSilence->text(),
         .threshold = form_.txbThreshold->text(),
         .wordsPerMinute = form_.txbSpeed->text(),
         .channels = form_.cbxChannels->currentText(),
         .onlyRows = onlyRows,
         .firstRow = form_.txbImportStartRow->text(),
         .lastRow = form_.txbImportEndRow->text(),
         .boxesAreLive = form_.txbThreshold->isEnabled(),
         .database = settings::databaseFile(services_.state.vsConnection)}))
        services_.notices.tell(notice);
}

void Preferences::showSegmentation(const settings::Record& row) {
    form_.txbSilence->setText(row.text(u"F2"_qs));
    form_.txbThreshold->setText(row.text(u"F3"_qs));
    form_.txbSpeed->setText(row.text(u"F4"_qs));
    form_.txbVariance->setText(row.text(u"F5"_qs));
    form_.cbxFrequency->setEditText(row.text(u"F6"_qs));
    form_.cbxBits->setEditText(row.text(u"F7"_qs));
    form_.cbxChannels->setEditText(row.text(u"F8"_qs));
    form_.cbxBitRate->setEditText(row.text(u"F9"_qs));
}

void Preferences::showScriptAndWindow(const settings::Record& row) {
    form_.chImportSpecifiedRows->setChecked(row.ticked(u"F2"_qs));
    form_.txbImportStartRow->setText(row.text(u"F3"_qs));
    form_.txbImportEndRow->setText(row.text(u"F4"_qs));
    form_.chBUSource->setChecked(row.ticked(u"F5"_qs));
    form_.opPlayfromlistview[row.isTrue(u"F6"_qs) ? 0 : 1]->setChecked(true);
    form_.chPromptSheet->setChecked(tickedAtMost1(row, u"F7"_qs));
    form_.chIgnoreFirstRow->setChecked(tickedAtMost1(row, u"F8"_qs));
    form_.chRecalcTimer->setChecked(row.ticked(u"F9"_qs));
    form_.txbRecalcTimer->setText(row.text(u"F10"_qs));
}

void Preferences::showScriptFormat(const settings::Record& row) {
    form_.OpScriptFormat[row.isTrue(u"F11"_qs) ? 0 : 1]->setChecked(true);
    OpScriptFormat_Click();
    if (row.isTrue(u"F12"_qs)) {
        form_.opRowEach[0]->setChecked(true);
    } else {
        // Turns index 0 off without turning index 1 on, which an exclusive group does not allow.
        form_.opRowEachGroup->setExclusive(false);
        form_.opRowEach[0]->setChecked(false);
        form_.opRowEachGroup->setExclusive(true);
    }
}

void Preferences::showScale(const settings::Record& row) {
    form_.slScaling->setValue(row.number(u"F13"_qs));
    services_.state.viScaleAtLoad = static_cast<qint16>(form_.slScaling->value());
    form_.txbScaling->setText(percentText(row.real(u"F13"_qs)));
    services_.state.vvScale = row.real(u"F13"_qs) / 100.0;
}

void Preferences::showNaming(const settings::Record& row) {
    const bool fromScript = row.isTrue(u"F2"_qs);
    form_.opAutoNaming[fromScript ? 0 : 1]->setChecked(true);
    form_.frAutoNumber->setEnabled(!fromScript);
    forms::assign(form_.txbPrefix, row.textOr(u"F3"_qs, {}));
    forms::assign(form_.txbStarting, row.textOr(u"F4"_qs, {}));
    forms::assign(form_.txbIncrement, row.textOr(u"F5"_qs, {}));
    forms::assign(form_.txbSuffix, row.textOr(u"F6"_qs, {}));
    runtime::element(form_.opSourceFileFormat, row.number(u"F7"_qs))->setChecked(true);
    opSourceFileFormat_Click();
}

void Preferences::mnuPreferences_Click() {
    if (form_.frTarnwick->isVisible()) focusBefore_ = QApplication::focusWidget();
    form_.frTarnwick->hide();
    QFrame* page = form_.frPreferences;
    page->move((form_.width() - page->width()) / 2, (form_.height() - page->height()) / 2);
    enableTimer(false);
    form_.frExcelSpecific->setFlat(true);
    page->show();
    form_.OpScriptFormat[form_.OpScriptFormat[0]->isChecked() ? 0 : 1]->setFocus();
    opened_();
}

void Preferences::leavePage() {
    form_.frPreferences->hide();
    form_.frTarnwick->show();
    if (focusBefore_) focusBefore_->setFocus();
}

void Preferences::cbPreferencesSave_Click() {
    runtime::guarded(
        services_.failure, u"frmMain.cbSaveSetupData_Click: ", [&](runtime::Line& line) {
            line(10);
            noticeScale();
            try {
                saveRows(line);
            } catch (const runtime::Fault& fault) {
                services_.notices.tell(
                    settingsNotStored(settings::databaseFile(services_.state.vsConnection),
                                      runtime::reasonOf(fault)));
                throw;
            }
            line(90);
            leavePage();
        });
    tellOfSettings();
}

// Lines 20 to 80 of cbPreferencesSave_Click.
void Preferences::saveRows(runtime::Line& line) {
    settings::SettingsDatabase& database = services_.database;
    line(20);
    const settings::Access access(database, services_.state.vsConnection);
    line(30);
    database.Execute(updateOfRow17());
    line(40);
    database.Execute(updateOfRow18());
    line(50);
    const int sourceFormat = sourceFormatIndex();
    line(60);
    database.Execute(updateOfRow19(sourceFormat));
    line(70);
    database.Close();
    line(80);
    database.Release();
}

// Announces a new scale once; the windows keep the scale that they started with.
void Preferences::noticeScale() {
    qint16& viScaleAtLoad = services_.state.viScaleAtLoad;
    const auto scale = static_cast<qint16>(form_.slScaling->value());
    if (viScaleAtLoad == 0 || viScaleAtLoad == scale) return;
    viScaleAtLoad = scale;
    services_.boxes.plain(u"The new scale will be effective next time Tarnwick is launched."_qs);
}

QString Preferences::updateOfRow17() const {
    return settings::UpdateStatement()
        .number(form_.txbSilence->text())
        .number(form_.txbThreshold->text())
        .number(form_.txbSpeed->text())
        .number(form_.txbVariance->text())
        .number(form_.cbxFrequency->currentText())
        .number(form_.cbxBits->currentText())
        .number(form_.cbxChannels->currentText())
        .number(form_.cbxBitRate->currentText())
        .where(u" WHERE F1 = 17");
}

QString Preferences::updateOfRow18() const {
    return settings::UpdateStatement()
        .integer(form_.chImportSpecifiedRows->isChecked())
        .number(form_.txbImportStartRow->text())
        .number(form_.txbImportEndRow->text())
        .integer(form_.chBUSource->isChecked())
        .boolean(form_.opPlayfromlistview[0]->isChecked())
        .integer(form_.chPromptSheet->isChecked())
        .integer(form_.chIgnoreFirstRow->isChecked())
        .integer(form_.chRecalcTimer->isChecked())
        .number(form_.txbRecalcTimer->text())
        .boolean(form_.OpScriptFormat[0]->isChecked())
        .boolean(form_.opRowEach[0]->isChecked())
        .integer(form_.slScaling->value())
        .where(u" WHERE F1 = 18");
}

int Preferences::sourceFormatIndex() const {
    int index = 0;
    while (index < 3 && !form_.opSourceFileFormat[index]->isChecked())
        ++index;
    return index;
}

QString Preferences::updateOfRow19(int sourceFormat) const {
    return settings::UpdateStatement()
        .boolean(form_.opAutoNaming[0]->isChecked())
        .quoted(form_.txbPrefix->text())
        .number(form_.txbStarting->text())
        .number(form_.txbIncrement->text())
        .quoted(form_.txbSuffix->text())
        .integer(sourceFormat)
        .where(u" WHERE F1 = 19");
}

void Preferences::cbPreferencesIgnore_Click() {
    runtime::guarded(services_.failure, u"frmMain.cbSaveSetupData_Click: ",
                     [&](runtime::Line& line) {
                         line(10);
                         PreferencesLoad();
                         line(20);
                         leavePage();
                     });
}

void Preferences::opSourceFileFormat_Click() {
    const bool mp3 = form_.opSourceFileFormat[1]->isChecked();
    form_.cbxBitRate->setVisible(mp3);
    form_.lbBitRate->setVisible(mp3);
}

void Preferences::OpScriptFormat_Click() {
    const bool excel = form_.OpScriptFormat[1]->isChecked();
    for (QWidget* control : std::initializer_list<QWidget*>{
             form_.chIgnoreFirstRow, form_.chPromptSheet, form_.chImportSpecifiedRows,
             form_.txbImportStartRow, form_.txbImportEndRow})
        control->setEnabled(excel);
}

void Preferences::slScaling_Scroll() {
    form_.txbScaling->setText(percentText(form_.slScaling->value()));
}

bool Preferences::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick)
        services_.failure.unguarded([this] { lbRecalcTimer_DblClick(); });
    return QObject::eventFilter(watched, event);
}

void Preferences::lbRecalcTimer_DblClick() {
    if (services_.boxes.input(u"Password:"_qs) == runtime::kServiceCode) enableTimer(true);
}

// Stays in force until the page is opened again.
void Preferences::enableTimer(bool on) {
    form_.txbRecalcTimer->setEnabled(on);
    form_.chRecalcTimer->setEnabled(on);
}

}  // namespace tarnwick::app
