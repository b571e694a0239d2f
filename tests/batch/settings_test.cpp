#include <QButtonGroup>
#include <QFocusEvent>

#include "batch/batch_settings.h"
#include "batch/level_boxes.h"
#include "desk.h"
#include "support/fault_of.h"
#include "support/in_region.h"
#include "support/text_table.h"

using namespace tarnwick;
using test::faultOf;

namespace {

struct Levels : test::BatchDesk {
    batch::LevelBoxes levels{form, services};

    Levels() { levels.decibelsDrive(); }
    static void focus(QLineEdit* box, QEvent::Type type, Qt::FocusReason reason) {
        QFocusEvent event(type, reason);
        QCoreApplication::sendEvent(box, &event);
    }
    static void enter(QLineEdit* box) { focus(box, QEvent::FocusIn, Qt::TabFocusReason); }
    static void leave(QLineEdit* box, Qt::FocusReason reason = Qt::TabFocusReason) {
        focus(box, QEvent::FocusOut, reason);
    }
    QString silence() const {
        return form.txbSilencedB->text() + u';' + form.txbSilencePerc->text() + u';' +
               form.txbSilenceThreshold->text();
    }
    QString norm() const { return form.txbNormdB->text() + u';' + form.txbNormPerc->text(); }
};

TEST_F(Levels, TheBoxThatTheOperatorIsInDrivesTheOther) {
    const char* const entries = R"(
txbSilencedB|-40|-40;1.0;327|txbSilencedB|20|20;1000.0;327670|
txbSilencedB|-26dB|-26dB;1000.0;327670|txbSilencedB|7000|7000;1000.0;327670|
txbSilencePerc|10|-20.0;10;3276|txbSilencePerc|0|-20.0;0;0|txbSilencePerc|0.2|-54.0;0.2;65|
txbSilencePerc|soft|-54.0;soft;65|txbNormdB|20|20;1000.0|txbNormdB|-|-;1000.0|
txbNormPerc|100|0.0;100|txbNormPerc|-5|0.0;-5|txbNormPerc|5|-26.0;5)";
    for (const QStringList& entry : test::rowsOf(entries, 3)) {
        auto* box = form.findChild<QLineEdit*>(entry[0]);
        enter(box);
        box->setText(entry[1]);
        EXPECT_EQ(entry[0].startsWith(u"txbSilence") ? silence() : norm(), entry[2]);
    }
}

TEST_F(Levels, AFaultEndsItsStatementOnly) {
    form.txbSilencePerc->setText(u"3.0"_qs);
    EXPECT_EQ(silence(), u"-26;3.0;0") << "not the box that the operator is in";
    form.txbSilencedB->setText(u"-26 dB"_qs);
    EXPECT_EQ(silence(), u"-26 dB;3.0;983");
}

TEST_F(Levels, LeavingABox) {
    enter(form.txbSilencePerc);
    form.txbSilencePerc->clear();
    for (const auto reason :
         {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason})
        leave(form.txbSilencePerc, reason);
    EXPECT_EQ(silence(), u"-26;;0") << "the box was not left";
    leave(form.txbSilencePerc);
    EXPECT_EQ(silence(), u"-100.0;0.001;0");
    leave(form.txbSilencedB);
    enter(form.txbNormPerc);
    form.txbNormPerc->setText(u"full"_qs);
    leave(form.txbNormPerc);
    EXPECT_EQ(norm(), u"-100.0;0.001");
    enter(form.txbNormdB);
    const std::pair<QString, QString> left[] = {{u"-1.25"_qs, u"-1.3;86.1"_qs},
                                                {u"-6"_qs, u"-6.0;50.1"_qs},
                                                {u"loud"_qs, u"loud;50.1"_qs},
                                                {u""_qs, u";50.1"_qs}};
    for (const auto& [typed, expected] : left) {
        form.txbNormdB->setText(typed);
        leave(form.txbNormdB);
        EXPECT_EQ(norm(), expected);
    }
}

TEST_F(Levels, ARunWantsAQuietThresholdAndALoudMaximum) {
    const std::tuple<QString, QString, bool, bool> cases[] = {
        {u"10.1"_qs, u"60.0"_qs, false, true},
        {u"10.0"_qs, u"59.9"_qs, true, false},
        {u"1e999"_qs, u"61 %"_qs, false, true},
        {u"none"_qs, u"loud"_qs, true, false},
        {u"5.0"_qs, u"100.0"_qs, true, true}};
    const auto red = [](const QLineEdit* box) {
        return box->palette().color(QPalette::Base) == QColor(255, 0, 0);
    };
    for (const auto& [silencePercent, normPercent, quiet, loud] : cases) {
        form.txbSilencePerc->setText(silencePercent);
        form.txbNormPerc->setText(normPercent);
        EXPECT_EQ(levels.silenceThresholdAllowed(), quiet);
        EXPECT_EQ(red(form.txbSilencedB), !quiet);
        EXPECT_EQ(levels.normMaximumAllowed(), loud);
        EXPECT_EQ(red(form.txbNormdB), !loud);
        EXPECT_EQ(boxes().size(), (quiet ? 0 : 1) + (loud ? 0 : 1));
    }
    form.txbSilencePerc->setText(u"none"_qs);
    EXPECT_EQ(faultOf([&] { levels.writeSilenceThreshold(); }), u"Type mismatch");
    for (const auto& [text, fault] :
         {std::pair{u"loud"_qs, u"Type mismatch"_qs}, {u"1e39"_qs, u"Overflow"_qs}}) {
        form.txbNormPerc->setText(text);
        EXPECT_EQ(faultOf([&] { levels.normPercent(); }), fault);
    }
    form.txbNormPerc->setText(u"84.1"_qs);
    EXPECT_EQ(levels.normPercent(), 84.1F);
}

TEST_F(Levels, WhatTheBoxShowsIsWhatIsChecked) {
    const struct {
        const char* locale;
        QString silence, silencePercent, norm, normPercent;
        bool quiet, loud;
    } cases[] = {{"C.UTF-8", u"20"_qs, u"1000.0"_qs, u"20"_qs, u"1000.0"_qs, false, true},
                 {"en_US.UTF-8", u"20"_qs, u"1,000.0"_qs, u"20"_qs, u"1000.0"_qs, false, true},
                 {"de_DE.UTF-8", u"-19,5"_qs, u"10,6"_qs, u"-4,5"_qs, u"59,6"_qs, false, false},
                 {"de_DE.UTF-8", u"40"_qs, u"10.000,0"_qs, u"-4.4"_qs, u"60,3"_qs, false, true},
                 {"fr_FR.UTF-8", u"20"_qs, u"1\u202f000,0"_qs, u"-1"_qs, u"89,1"_qs, false, true},
                 {"fa_IR.UTF-8", u"-20"_qs, u"۱۰٫۰"_qs, u"0"_qs, u"۱۰۰٫۰"_qs, true, true}};
    for (const auto& [locale, silence, silencePercent, norm, normPercent, quiet, loud] : cases) {
        const test::InRegion region(locale);
        form.txbSilencedB->clear();
        form.txbNormdB->clear();
        form.txbSilencedB->setText(silence);
        form.txbNormdB->setText(norm);
        EXPECT_EQ(form.txbSilencePerc->text(), silencePercent) << locale;
        EXPECT_EQ(form.txbNormPerc->text(), normPercent) << locale;
        EXPECT_EQ(levels.silenceThresholdAllowed(), quiet) << locale;
        EXPECT_EQ(levels.normMaximumAllowed(), loud) << locale;
        boxes();
    }
    const test::InRegion german("de_DE.UTF-8");
    enter(form.txbSilencePerc);
    form.txbSilencePerc->setText(u"0,5"_qs);
    leave(form.txbSilencePerc);
    EXPECT_EQ(silence(), u"-46,0;0,5;163") << "that is not 0";
}

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
    const std::map<int, QString> rows{{12, u"-,1,1,400,600.5,-30,250,75,-,-"_qs},
                                      {13, u"-,1,-1.5,1,-,-,-,-,-,-"_qs},
                                      {14, u"-,1,2,3,1,0,96 kbps,GSM 6.10,22.050 kHz, Mono,-"_qs}};
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
    execute(
        u"UPDATE Admin SET F3 = 0, F4 = 0, F5 = 0, F6 = 0, F7 = 0, F8 = 0 WHERE F1 IN (12, 13, 14)"_qs);
    execute(u"UPDATE Admin SET F6 = NULL, F7 = NULL, F8 = NULL WHERE F1 = 13"_qs);
    save();
    for (const auto& [number, expected] : rows)
        EXPECT_EQ(row(number), expected);
    execute(u"UPDATE Admin SET F4 = 1, F8 = '32 kbps' WHERE F1 = 14"_qs);
    load();
    EXPECT_EQ(form.cbxOutputCBR->currentText(), u"32 kbps");
    EXPECT_EQ(form.cbxOutputCBR->currentIndex(), 0) << "the first of a list is found, too";
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
        EXPECT_EQ(endOf([&] { load(); }), u"Save_LoadProcessor_Data: %1, Line 50"_qs.arg(fault));
        EXPECT_FALSE(database.isOpen());
    }
}

TEST_F(Settings, WhatNoStatementCanHoldEndsTheSaveWhereItStands) {
    load();
    const QString before = row(12);
    for (QLineEdit* box :
         {form.txbSetSilenceStart, form.txbSetSilenceEnd, form.txbCutEnd, form.txbCutStart}) {
        const QString text = box->text();
        box->clear();
        EXPECT_EQ(endOf([&] { save(); }),
                  u"Save_BatchProcessor_Data: Syntax error in number ''., Line 20");
        box->setText(text);
    }
    EXPECT_EQ(row(12), before);
    form.txbCutStart->setText(u"60"_qs);
    form.txbNormdB->setText(u"-1'"_qs);
    form.opChannel[0]->setChecked(true);
    EXPECT_EQ(endOf([&] { save(); }),
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
