#include <QButtonGroup>

#include "batch/batch_settings.h"
#include "batch/level_boxes.h"
#include "batch/output_encoding.h"
#include "batch/trace.h"
#include "desk.h"

using namespace tarnwick;

namespace {

struct Settings : test::BatchDesk {
    batch::LevelBoxes levels{form, services};
    batch::Trace trace{*form.txbDebug};
    batch::OutputEncoding output{form, run, services, trace};
    batch::BatchSettings settings{form, services, levels};

    QString row(int number) {
        const settings::Access access(database, state.vsConnection);
        const settings::Record record =
            database.Read(u"SELECT * FROM Admin WHERE F1 = %1"_qs.arg(number));
        QStringList texts;
        for (int column = 2; column <= 11; ++column)
            texts << record.textOr(u"F%1"_qs.arg(column), u"-"_qs);
        return texts.join(u',');
    }
    // What the fatal box says of the procedure; empty where it ends well.
    QString failureOf(const std::function<void()>& procedure) {
        try {
            procedure();
            return {};
        } catch (const test::ProcessEnded&) {
            return boxes()
                .value(0)
                .section(u"Error: frmBatchProcessor."_qs, 1)
                .section(u"\r\n"_qs, 0, 0);
        }
    }
    void load() { settings.Save_LoadProcessor_Data(); }
    void save() { settings.Save_BatchProcessor_Data(); }
    static bool marked(const QLabel* step) {
        EXPECT_EQ(step->isEnabled(), step->font().bold());
        return step->isEnabled();
    }
};

TEST_F(Settings, DeliveredOnesAreTheDesign) {
    load();
    EXPECT_EQ(form.txbSilenceThreshold->text(), u"1638") << "the percent follows the stored text";
    EXPECT_EQ(form.txbNormPerc->text(), u"100.0");
    EXPECT_EQ(form.cbxOutputCBR->currentText(), QString()) << "found behind the last item";
    EXPECT_TRUE(form.chConvert->isChecked() && marked(form.lbResample));
    EXPECT_TRUE(form.frFormat->isEnabled() && form.frResampleSettings->isEnabled());
    EXPECT_FALSE(marked(form.lbCutEnd) || marked(form.lbSetSilences) || marked(form.lbNormalize) ||
                 marked(form.lbHissFilter));
    EXPECT_FALSE(database.isOpen());
}

TEST_F(Settings, ComeBackAsTheyWereSaved) {
    const QString rows[] = {u"-,1,1,400,600.5,-30,250,75,-,-"_qs, u"-,1,-1.5,1,-,-,-,-,-,-"_qs,
                            u"-,1,2,3,1,0,96 kbps,GSM 6.10,22.050 kHz, Mono,-"_qs};
    execute(
        u"UPDATE Admin SET F3 = 1, F4 = 1, F5 = 400, F6 = 600.5, F7 = '-30', F8 = 250, F9 = 75 WHERE F1 = 12"_qs);
    execute(u"UPDATE Admin SET F3 = 1, F4 = '-1.5', F5 = 1 WHERE F1 = 13"_qs);
    execute(
        u"UPDATE Admin SET F3 = 0, F4 = 2, F5 = 3, F6 = 1, F7 = 0, F8 = '96 kbps', F9 = 'GSM 6.10', F10 = '22.050 kHz, Mono' WHERE F1 = 14"_qs);
    load();
    EXPECT_EQ(form.txbSilencePerc->text() + form.txbSilenceThreshold->text(), u"3.21048");
    EXPECT_EQ(form.txbNormPerc->text(), u"84.1");
    EXPECT_TRUE(marked(form.lbCutEnd) && marked(form.lbSetSilences) && marked(form.lbNormalize) &&
                marked(form.lbHissFilter) && form.txbSilencePerc->isEnabled());
    EXPECT_EQ(form.cbxCodecs->currentIndex(), 5);
    EXPECT_EQ(form.cbxCodecFormats->currentText(), u"22.050 kHz, Mono");
    for (const int number : {12, 13, 14})
        execute(
            u"UPDATE Admin SET F3 = 0, F4 = 0, F5 = 0, F6 = 0, F7 = 0, F8 = 0 WHERE F1 = %1"_qs.arg(
                number));
    execute(u"UPDATE Admin SET F6 = NULL, F7 = NULL, F8 = NULL WHERE F1 = 13"_qs);
    save();
    for (const int number : {12, 13, 14})
        EXPECT_EQ(row(number), rows[number - 12]);
}

TEST_F(Settings, TheFirstOfAListIsFoundToo) {
    execute(u"UPDATE Admin SET F4 = 1, F8 = '32 kbps' WHERE F1 = 14"_qs);
    load();
    EXPECT_EQ(form.cbxOutputCBR->currentText(), u"32 kbps");
    EXPECT_EQ(form.cbxOutputCBR->currentIndex(), 0);
}

TEST_F(Settings, ATickEnablesWhatItsStepReads) {
    const std::tuple<QCheckBox*, QLabel*, QList<QWidget*>> ticks[] = {
        {form.chCutEnd, form.lbCutEnd, {form.txbCutEnd, form.txbCutStart}},
        {form.chSilenceEnds,
         form.lbSetSilences,
         {form.txbSetSilenceStart, form.txbSetSilenceEnd, form.txbSilencedB, form.txbSilencePerc}},
        {form.chNormalize, form.lbNormalize, {form.txbNormdB, form.txbNormPerc}},
        {form.chHissFilter, form.lbHissFilter, {}},
        {form.chConvert, form.lbResample, {form.frFormat, form.frResampleSettings}}};
    for (const auto& [tick, step, controls] : ticks)
        for (const bool on : {true, false}) {
            tick->setChecked(!on);
            tick->setChecked(on);
            EXPECT_EQ(marked(step), on);
            for (const QWidget* control : controls)
                EXPECT_EQ(control->isEnabledTo(control->parentWidget()), on)
                    << qPrintable(control->objectName());
        }
}

TEST_F(Settings, ANullIsZeroButNotAmongTheOptions) {
    execute(
        u"UPDATE Admin SET F3 = NULL, F4 = NULL, F5 = NULL, F6 = NULL, F7 = NULL, F8 = NULL, F9 = NULL WHERE F1 IN (12, 13)"_qs);
    execute(u"UPDATE Admin SET F4 = 1, F8 = NULL, F9 = NULL, F10 = NULL WHERE F1 = 14"_qs);
    load();
    EXPECT_TRUE(form.cbxOutputCBR->currentText().endsWith(u"kbps"));
    EXPECT_EQ(form.txbSetSilenceStart->text() + form.txbSetSilenceEnd->text() +
                  form.txbCutEnd->text() + form.txbCutStart->text() + form.txbNormdB->text(),
              u"00000");
    EXPECT_EQ(form.txbSilencedB->text() + form.txbSilencePerc->text(), u"0100.0");
    const std::pair<QString, QString> faults[] = {{u"NULL"_qs, u"Invalid use of Null"_qs},
                                                  {u"4"_qs, u"Subscript out of range"_qs},
                                                  {u"'x'"_qs, u"Type mismatch"_qs}};
    for (const auto& [index, fault] : faults) {
        execute(u"UPDATE Admin SET F4 = %1 WHERE F1 = 14"_qs.arg(index));
        EXPECT_EQ(failureOf([&] { load(); }),
                  u"Save_LoadProcessor_Data: %1, Line 50"_qs.arg(fault));
        EXPECT_FALSE(database.isOpen());
    }
}

TEST_F(Settings, WhatNoStatementCanHoldEndsTheSaveWhereItStands) {
    load();
    const QString before = row(12);
    const QString empty = u"Save_BatchProcessor_Data: Syntax error in number ''., Line 20"_qs;
    for (QLineEdit* box :
         {form.txbSetSilenceStart, form.txbSetSilenceEnd, form.txbCutEnd, form.txbCutStart}) {
        const QString text = box->text();
        box->clear();
        EXPECT_EQ(failureOf([&] { save(); }), empty);
        box->setText(text);
    }
    EXPECT_EQ(row(12), before);
    form.txbCutStart->setText(u"60"_qs);
    form.txbNormdB->setText(u"-1'"_qs);
    form.opChannel[0]->setChecked(true);
    EXPECT_EQ(failureOf([&] { save(); }),
              u"Save_BatchProcessor_Data: Syntax error in string '-1''., Line 30");
    EXPECT_EQ(row(12), u"-,0,0,500,500,-26,300,60,-,-") << "stored before";
    EXPECT_EQ(row(14), u"-,1,0,5,2,1,,,,-") << "never reached";
}

TEST_F(Settings, NoneSelectedIsOnePastTheLastAndApostrophesAreStored) {
    load();
    form.opRate[2]->group()->setExclusive(false);
    form.opRate[2]->setChecked(false);
    form.cbxOutputCBR->setEditText(u"it's"_qs);
    save();
    EXPECT_EQ(row(14), u"-,1,0,5,5,1,it's,,,-");
}

}  // namespace
