#include "batch/batch_settings.h"

#include <algorithm>
#include <span>

#include "batch/level_boxes.h"
#include "forms/fonts.h"
#include "forms/frm_batch_processor.h"
#include "forms/texts.h"
#include "runtime/arithmetic.h"
#include "runtime/events.h"
#include "runtime/guarded.h"
#include "settings/update_statement.h"

namespace tarnwick::batch {

namespace {

bool tickedOrNull(const settings::Record& row, const QString& column) {
    return !row.isNull(column) && row.ticked(column);
}

QString textOrZero(const settings::Record& row, const QString& column) {
    return row.textOr(column, u"0"_qs);
}

void select(std::span<QRadioButton* const> options, qint32 index) {
    runtime::element(options, index)->setChecked(true);
}

// The index of the selected option; one past the last if none is selected.
qint32 selectedOf(std::span<QRadioButton* const> options) {
    const auto on = std::ranges::find_if(options, &QRadioButton::isChecked);
    return static_cast<qint32>(on - options.begin());
}

// An empty stored text selects the empty entry at the end of the list, or else empties the box.
void selectListed(QComboBox* box, const QString& stored) {
    const int listed = box->findText(stored);
    if (listed >= 0)
        box->setCurrentIndex(listed);
    else if (stored.isEmpty())
        box->clearEditText();
}

void mark(QLabel* step, bool on) {
    step->setEnabled(on);
    forms::setBold(step, on);
}

}  // namespace

// Any change of a tick box counts as a click, whether by mouse, key or code.
BatchSettings::BatchSettings(forms::frmBatchProcessor& form, const Services& services,
                             LevelBoxes& levels)
    : form_(form), services_(services), levels_(levels) {
    const auto tick = [this](QCheckBox* box, auto handler) {
        runtime::onEvent(services_.failure, box, &QCheckBox::toggled, this,
                         [this, handler] { (this->*handler)(); });
    };
    tick(form_.chCutEnd, &BatchSettings::chCutEnd_Click);
    tick(form_.chSilenceEnds, &BatchSettings::chSilenceEnds_Click);
    tick(form_.chNormalize, &BatchSettings::chNormalize_Click);
    tick(form_.chHissFilter, &BatchSettings::chHissFilter_Click);
    tick(form_.chConvert, &BatchSettings::chConvert_Click);
}

void BatchSettings::Save_LoadProcessor_Data() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.Save_LoadProcessor_Data: ",
                     [&](runtime::Line& line) {
                         settings::SettingsDatabase& database = services_.database;
                         line(10);
                         levels_.decibelsDrive();
                         line(20);
                         const settings::Access access(database, services_.state.vsConnection);
                         line(30);
                         showSilence(database.Read(u"SELECT * FROM Admin WHERE F1 = 12"_qs));
                         line(40);
                         showLevels(database.Read(u"SELECT * FROM Admin WHERE F1 = 13"_qs));
                         line(50);
                         showOutput(database.Read(u"SELECT * FROM Admin WHERE F1 = 14"_qs));
                         line(60);
                         database.Close();
                         line(70);
                         database.Release();
                         line(80);
                         clickAll();
                     });
}

void BatchSettings::showSilence(const settings::Record& row) {
    form_.chSilenceEnds->setChecked(tickedOrNull(row, u"F3"_qs));
    form_.chCutEnd->setChecked(tickedOrNull(row, u"F4"_qs));
    form_.txbSetSilenceStart->setText(textOrZero(row, u"F5"_qs));
    form_.txbSetSilenceEnd->setText(textOrZero(row, u"F6"_qs));
    forms::assign(form_.txbSilencedB, textOrZero(row, u"F7"_qs));
    form_.txbCutEnd->setText(textOrZero(row, u"F8"_qs));
    form_.txbCutStart->setText(textOrZero(row, u"F9"_qs));
}

void BatchSettings::showLevels(const settings::Record& row) {
    form_.chNormalize->setChecked(tickedOrNull(row, u"F3"_qs));
    forms::assign(form_.txbNormdB, textOrZero(row, u"F4"_qs));
    form_.chHissFilter->setChecked(tickedOrNull(row, u"F5"_qs));
}

// The options are set first because their handlers fill the lists in which the texts are looked up.
void BatchSettings::showOutput(const settings::Record& row) {
    form_.chConvert->setChecked(true);
    select(form_.opFormat, row.number(u"F4"_qs));
    select(form_.opFrequency, row.number(u"F5"_qs));
    select(form_.opRate, row.number(u"F6"_qs));
    select(form_.opChannel, row.number(u"F7"_qs));
    if (!row.isNull(u"F8"_qs)) selectListed(form_.cbxOutputCBR, row.textOr(u"F8"_qs, {}));
    const QString codec = row.textOr(u"F9"_qs, {});
    if (!codec.isEmpty()) selectListed(form_.cbxCodecs, codec);
    const QString format = row.textOr(u"F10"_qs, {});
    if (!format.isEmpty()) selectListed(form_.cbxCodecFormats, format);
}

void BatchSettings::clickAll() {
    chCutEnd_Click();
    chSilenceEnds_Click();
    chNormalize_Click();
    chHissFilter_Click();
    chConvert_Click();
}

void BatchSettings::Save_BatchProcessor_Data() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.Save_BatchProcessor_Data: ",
                     [&](runtime::Line& line) {
                         settings::SettingsDatabase& database = services_.database;
                         line(10);
                         const settings::Access access(database, services_.state.vsConnection);
                         line(20);
                         database.Execute(updateOfRow12());
                         line(30);
                         database.Execute(updateOfRow13());
                         line(40);
                         database.Execute(updateOfRow14());
                         line(50);
                         database.Close();
                     });
}

QString BatchSettings::updateOfRow12() const {
    return settings::UpdateStatement(3)
        .integer(form_.chSilenceEnds->isChecked())
        .integer(form_.chCutEnd->isChecked())
        .asTyped(form_.txbSetSilenceStart->text())
        .asTyped(form_.txbSetSilenceEnd->text())
        .quoted(form_.txbSilencedB->text())
        .asTyped(form_.txbCutEnd->text())
        .asTyped(form_.txbCutStart->text())
        .where(u"  WHERE F1 = 12");
}

QString BatchSettings::updateOfRow13() const {
    return settings::UpdateStatement(3)
        .integer(form_.chNormalize->isChecked())
        .quoted(form_.txbNormdB->text())
        .integer(form_.chHissFilter->isChecked())
        .where(u"  WHERE F1 = 13");
}

QString BatchSettings::updateOfRow14() const {
    return settings::UpdateStatement(3)
        .integer(form_.chConvert->isChecked())
        .integer(selectedOf(form_.opFormat))
        .integer(selectedOf(form_.opFrequency))
        .integer(selectedOf(form_.opRate))
        .integer(selectedOf(form_.opChannel))
        .quotedDoubled(form_.cbxOutputCBR->currentText())
        .quotedDoubled(form_.cbxCodecs->currentText())
        .quotedDoubled(form_.cbxCodecFormats->currentText())
        .where(u"  WHERE F1 = 14");
}

void BatchSettings::chCutEnd_Click() {
    const bool on = form_.chCutEnd->isChecked();
    form_.txbCutEnd->setEnabled(on);
    form_.txbCutStart->setEnabled(on);
    mark(form_.lbCutEnd, on);
}

void BatchSettings::chSilenceEnds_Click() {
    const bool on = form_.chSilenceEnds->isChecked();
    for (QLineEdit* box : {form_.txbSetSilenceStart, form_.txbSetSilenceEnd, form_.txbSilencedB,
                           form_.txbSilencePerc})
        box->setEnabled(on);
    mark(form_.lbSetSilences, on);
}

void BatchSettings::chNormalize_Click() {
    const bool on = form_.chNormalize->isChecked();
    form_.txbNormdB->setEnabled(on);
    form_.txbNormPerc->setEnabled(on);
    mark(form_.lbNormalize, on);
}

void BatchSettings::chHissFilter_Click() {
    mark(form_.lbHissFilter, form_.chHissFilter->isChecked());
}

void BatchSettings::chConvert_Click() {
    const bool on = form_.chConvert->isChecked();
    form_.frFormat->setEnabled(on);
    form_.frResampleSettings->setEnabled(on);
    mark(form_.lbResample, on);
}

}  // namespace tarnwick::batch
