#include "app/preferences.h"

#include "forms/frm_main.h"
#include "runtime/arithmetic.h"
#include "runtime/guarded.h"

namespace tarnwick::app {

namespace {

QString textOrEmpty(const settings::Record& row, const QString& column) {
    return row.isNull(column) ? QString() : row.text(column);
}

// A stored tick is 1; whatever else stands there counts as none.
bool ticked(const settings::Record& row, const QString& column) { return row.number(column) == 1; }

}  // namespace

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
    form_.chImportSpecifiedRows->setChecked(ticked(row, u"F2"_qs));
    form_.txbImportStartRow->setText(row.text(u"F3"_qs));
    form_.txbImportEndRow->setText(row.text(u"F4"_qs));
    form_.chBUSource->setChecked(ticked(row, u"F5"_qs));
    form_.opPlayfromlistview[row.isTrue(u"F6"_qs) ? 0 : 1]->setChecked(true);
    form_.chPromptSheet->setChecked(ticked(row, u"F7"_qs));
    form_.chIgnoreFirstRow->setChecked(ticked(row, u"F8"_qs));
    form_.chRecalcTimer->setChecked(ticked(row, u"F9"_qs));
    form_.txbRecalcTimer->setText(row.text(u"F10"_qs));
}

void Preferences::showScriptFormat(const settings::Record& row) {
    form_.OpScriptFormat[row.isTrue(u"F11"_qs) ? 0 : 1]->setChecked(true);
    const bool excel = form_.OpScriptFormat[1]->isChecked();
    for (QWidget* control : std::initializer_list<QWidget*>{
             form_.chIgnoreFirstRow, form_.chPromptSheet, form_.chImportSpecifiedRows,
             form_.txbImportStartRow, form_.txbImportEndRow})
        control->setEnabled(excel);
    if (row.isTrue(u"F12"_qs)) {
        form_.opRowEach[0]->setChecked(true);
    } else {
        // Index 0 goes off without index 1 coming on, which an exclusive group does not allow.
        form_.opRowEachGroup->setExclusive(false);
        form_.opRowEach[0]->setChecked(false);
        form_.opRowEachGroup->setExclusive(true);
    }
}

void Preferences::showScale(const settings::Record& row) {
    form_.slScaling->setValue(row.number(u"F13"_qs));
    services_.state.viScaleAtLoad = static_cast<qint16>(form_.slScaling->value());
    form_.txbScaling->setText(QString::number(row.number(u"F13"_qs)) + u'%');
    services_.state.vvScale = row.real(u"F13"_qs) / 100.0;
}

void Preferences::showNaming(const settings::Record& row) {
    const bool fromScript = row.isTrue(u"F2"_qs);
    form_.opAutoNaming[fromScript ? 0 : 1]->setChecked(true);
    form_.frAutoNumber->setEnabled(!fromScript);
    form_.txbPrefix->setText(textOrEmpty(row, u"F3"_qs));
    form_.txbStarting->setText(textOrEmpty(row, u"F4"_qs));
    form_.txbIncrement->setText(textOrEmpty(row, u"F5"_qs));
    form_.txbSuffix->setText(textOrEmpty(row, u"F6"_qs));
    runtime::element(form_.opSourceFileFormat, row.number(u"F7"_qs))->setChecked(true);
    const bool mp3 = form_.opSourceFileFormat[1]->isChecked();
    form_.cbxBitRate->setVisible(mp3);
    form_.lbBitRate->setVisible(mp3);
}

}  // namespace tarnwick::app
