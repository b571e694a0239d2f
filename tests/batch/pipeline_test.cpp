#include <gtest/gtest.h>

#include <QMouseEvent>

#include "batch/chain_step.h"
#include "chain.h"

using namespace tarnwick::batch;
using namespace tarnwick;

namespace {

// One letter for each step, in the order of ChainStep.
char letter(ChainStep step) { return "-sedthnx!+FR"[static_cast<int>(step)]; }

std::string told(ChainEvent event, const ChainMoment& moment) {
    const Following next = following(event, moment);
    return std::string{letter(next.step), '|'}.append(next.vsFilterStep.toStdString());
}

// Every combination of the operator's options, with the steps of a file in order as letters: start,
// end, detect, hiss, normalise, export.
struct Asked {
    ChainMoment moment;
    std::string steps;
};
std::vector<Asked> everythingAsked() {
    std::vector<Asked> all;
    for (int bits = 0; bits < 64; ++bits) {
        Asked asked;
        ChainMoment& m = asked.moment;
        bool* const flags[] = {&m.chCutEnd,      &m.cutsStart,    &m.cutsEnd,
                               &m.chSilenceEnds, &m.chHissFilter, &m.chNormalize};
        for (int i = 0; i < 6; ++i)
            *flags[i] = (bits >> i & 1) != 0;
        if (m.chCutEnd && m.cutsStart) asked.steps += 's';
        if (m.chCutEnd && (m.cutsEnd || !m.cutsStart)) asked.steps += 'e';
        if (m.chSilenceEnds) asked.steps += 'd';
        if (m.chHissFilter) asked.steps += 'h';
        if (m.chNormalize) asked.steps += 'n';
        all.push_back({m, asked.steps + 'x'});
    }
    return all;
}

TEST(ChainStep, StepsFollowOneAnotherInTheirOrder) {
    for (Asked& asked : everythingAsked()) {
        ChainMoment& m = asked.moment;
        const std::string& steps = asked.steps;
        const auto behind = [&](std::string_view done) {
            return steps[steps.find_first_not_of(done)];
        };
        // State left by the file before has no effect.
        m.nCommand = 19;
        m.vsFilterStep = kSetSilenceEnd.toString();
        const std::map<char, std::string> texts{
            {'s', "CutFileStart"}, {'e', "CutFileEnd"}, {'n', "All Filters Done"}};
        const auto text = texts.find(steps[0]);
        const std::string loaded = told(ChainEvent::SoundLoaded, m);
        EXPECT_EQ(loaded[0], steps[0]);
        EXPECT_EQ(loaded.substr(2), text == texts.end() ? "Set Silence End" : text->second);

        m.nCommand = 1;
        m.vsFilterStep = kCutFileStart.toString();
        const std::string cut = told(ChainEvent::EditEnded, m);
        if (m.cutsEnd)
            EXPECT_EQ(cut, "e|CutFileEnd");
        else
            EXPECT_EQ(cut, std::string(1, behind("se")).append("|CutFileStart"));
        for (const QStringView other : {kCutFileEnd, kSetSilenceEnd, QStringView()}) {
            m.vsFilterStep = other.toString();
            EXPECT_EQ(told(ChainEvent::EditEnded, m)[0], behind("se"));
        }
        for (const qint16 silence : {2, 14}) {
            m.nCommand = silence;
            m.vsFilterStep = kSetSilenceEnd.toString();
            EXPECT_EQ(told(ChainEvent::EditEnded, m), "t|");
            m.vsFilterStep.clear();
            EXPECT_EQ(told(ChainEvent::EditEnded, m), (std::string{behind("sed"), '|'}));
        }
        for (const ChainEvent event : {ChainEvent::EditEnded, ChainEvent::ErrorAnswered}) {
            m.nCommand = 16;
            EXPECT_EQ(told(event, m)[0], behind("sedh"));
            m.nCommand = 19;
            EXPECT_EQ(told(event, m)[0], 'x');
        }
    }
}

TEST(ChainStep, WhatDoesNotFitLeadsNowhereOrIsToldTo) {
    ChainMoment m;
    m.chSilenceEnds = m.chNormalize = m.cutsEnd = true;
    m.vsFilterStep = kSetSilenceEnd.toString();
    for (const qint16 command : {0, 3, 4, 15, -1}) {
        m.nCommand = command;
        EXPECT_EQ(told(ChainEvent::EditEnded, m), "-|Set Silence End");
    }
    m.nCommand = 19;
    EXPECT_EQ(told(ChainEvent::EditEnded, m), "x|Set Silence End") << "without head and level";
    for (const qint16 command : {2, 14}) {
        m.nCommand = command;
        for (const QStringView step : {kCutFileStart, kCutFileEnd, kAllFiltersDone,
                                       QStringView(u"set silence end"), QStringView(u" ")}) {
            m.vsFilterStep = step.toString();
            EXPECT_EQ(told(ChainEvent::EditEnded, m)[0], '!') << step.toString().toStdString();
        }
        EXPECT_EQ(told(ChainEvent::ErrorAnswered, m)[0], '-');
    }
    EXPECT_EQ(told(ChainEvent::ExportEnded, m)[0], '+');
    m.lastFile = true;
    EXPECT_EQ(told(ChainEvent::ExportEnded, m)[0], 'F');
    m.appliesToEditor = true;
    EXPECT_EQ(told(ChainEvent::ExportEnded, m)[0], 'R');
}

using test::Chain;

TEST_F(Chain, AFileTakesEveryStepAndTheTraceTellsThem) {
    open({u"a.wav"_qs, u"b.wav"_qs});
    for (QCheckBox* box : {form.chCutEnd, form.chSilenceEnds, form.chNormalize})
        box->setChecked(true);
    form.txbNormdB->setText(u"-1.5"_qs);
    form.txbCutStart->setText(u"50.5"_qs);
    form.txbSilenceThreshold->setText(u"7"_qs);
    form.pbConversion->hide();
    form.lbConversion->hide();
    EXPECT_EQ(process(), u"SetLoadMode 0|LoadSound ZZ_TEMP_a.wav");
    EXPECT_FALSE(form.pbConversion->isHidden() || form.lbConversion->isHidden());
    const settings::Access access(database, state.vsConnection);
    EXPECT_EQ(database.Read(u"SELECT F9 FROM Admin WHERE F1 = 12"_qs).text(u"F9"_qs), u"50.5");
    EXPECT_EQ(raw(), u"b.wav|ZZ_TEMP_a.wav");
    for (const QWidget* off :
         std::initializer_list<QWidget*>{form.frNormalizationFunction, form.frSilenceFunction,
                                         form.frOutputSpecs, form.cbClose, form.cbProcess})
        EXPECT_FALSE(off->isEnabled());
    EXPECT_TRUE(form.frDirectories->isEnabled() && form.lbConversion->font().bold());
    EXPECT_EQ(loaded(), u"DeleteRange 0 50");
    EXPECT_EQ(edited(1), u"DeleteRange 9700 -1");
    EXPECT_EQ(edited(1), u"SilencePositionsDetect 1638 1");
    EXPECT_EQ(audible(800, 9000), u"RemoveSilence 9500 10000 1638 1");
    EXPECT_EQ(edited(14), u"RemoveSilence 0 300 1638 1");
    EXPECT_EQ(edited(14), u"Normalize 0 -1 84.1 100 100");
    EXPECT_EQ(edited(19), u"SoundExport 48000 2 0 -1 a.wav");
    EXPECT_EQ(trace(),
              u"File: a.wav\nvlDuration BEFORE Cut_File_Start = 10000\n"
              u"nResult for Cut_File_Start = 0\nvlDuration AFTER Cut_File_Start = 10000\n"
              u"nResult for Cut_File_End = 0\nvlDuration AFTER Cut_File_End = 10000\n"
              u"GetSoundDuration done in AudibleRangeDetected\n"
              u"vlSilenceAdjustment at Remove_End = 500\n"
              u"vlSilenceAdjustment at Remove_Start = 300\nEnter Normalization\n"
              u"nResult for Normalization: 0\nEnter Export\nExit Export");
    EXPECT_EQ(exported(), u"SetLoadMode 0|LoadSound ZZ_TEMP_b.wav");
    EXPECT_EQ(form.lbConversion->text(), u"Batch Processing File 0 of 2 ...");
    EXPECT_EQ(trace(), QString());
    EXPECT_EQ(raw(), u"a.wav|ZZ_TEMP_b.wav");
}

TEST_F(Chain, NothingAskedForIsAnExportOfEachFileAndThenTheEnd) {
    open({u"a.wav"_qs, u"b.wav"_qs, u"c.wav"_qs});
    process();
    for (const int done : {0, 1}) {
        EXPECT_TRUE(loaded().startsWith(u"SoundExport"));
        EXPECT_TRUE(exported().endsWith(form.txbFileToConvert->text()));
        EXPECT_EQ(form.lbConversion->text(), u"Batch Processing File %1 of 3 ..."_qs.arg(done));
        EXPECT_EQ(form.pbConversion->value(), done);
    }
    loaded();
    EXPECT_EQ(exported(), QString());
    EXPECT_EQ(form.lbConversion->text(), u"3 Files Have Been Processed!");
    EXPECT_TRUE(form.lbConversion->font().bold());
    EXPECT_TRUE(form.cbClose->isEnabled() && form.frOutputSpecs->isEnabled());
    EXPECT_TRUE(form.cbProcess->isHidden() && form.pbConversion->isHidden());
    EXPECT_EQ(form.cbClose->y(), 568);
    EXPECT_EQ(raw(), u"a.wav|b.wav|c.wav");
}

TEST_F(Chain, EndsThatAreRightAlreadyGoOnWithTheLastEdit) {
    open({u"a.wav"_qs});
    form.chSilenceEnds->setChecked(true);
    process();
    EXPECT_EQ(loaded(), u"SilencePositionsDetect 1638 1");
    EXPECT_EQ(trace().section(u'\n', -1), u"nResult for SilencePositionsDetect: 0");
    EXPECT_EQ(audible(100, 9500), QString());
    EXPECT_EQ(asked(), QString()) << "no edit yet: the run stands still";
    EXPECT_EQ(audible(500, 9900), u"InsertSilence 10000 400");
    EXPECT_TRUE(edited(2).startsWith(u"SoundExport")) << "the head is right";
    Q_EMIT EDTX.SoundEditDone(1, 1);
    for (int round = 0; round < 50; ++round) {
        EXPECT_EQ(asked(), u"SilencePositionsDetect 1638 1");
        EXPECT_EQ(audible(700, 9500), QString());
        EXPECT_TRUE(armed());
    }
    EXPECT_EQ(edited(19), u"SoundExport 48000 2 0 -1 a.wav") << "the end of a file before";
    EXPECT_EQ(endOf([&] { Q_EMIT EDTX.AudibleRangeDetected(0, -2147483647); }),
              u"Set_Silence_End: Overflow, Line 10");
}

TEST_F(Chain, WhatIsMissingAtTheEndsIsAddedAndALengthAboveZeroCuts) {
    open({u"a.wav"_qs});
    form.chSilenceEnds->setChecked(true);
    process();
    loaded();
    EXPECT_EQ(audible(200, 9600), u"InsertSilence 10000 100");
    EXPECT_EQ(edited(2), u"InsertSilence 0 300");
    EXPECT_TRUE(edited(2).startsWith(u"SoundExport"));
    EXPECT_TRUE(
        trace().contains(u"vlSilenceAdjustment at Add_End = 100\n"
                         u"vlSilenceAdjustment at Add_Start = 300\n"_qs));
    form.chCutEnd->setChecked(true);
    const std::tuple<QString, QString, QString> cuts[] = {
        {u"0"_qs, u"DeleteRange 9700 -1"_qs, u"SilencePositionsDetect 1638 1"_qs},
        {u"0.05"_qs, u"DeleteRange 0 0"_qs, u"DeleteRange 9700 -1"_qs}};
    for (const auto& [start, first, second] : cuts) {
        form.txbCutStart->setText(start);
        EXPECT_EQ(loaded(), first);
        EXPECT_EQ(edited(1), second);
    }
}

TEST_F(Chain, WhatHoldsARun) {
    open({u"a%1.wav"_qs});
    EDTX.loadResult = -5;
    EDTX.lastError = -5;
    process();
    EXPECT_EQ(boxes(), QStringList(u"Cannot load file "_qs + in(u"Raw_Files/a%1.wav"_qs) +
                                   u" with error -5"_qs));
    form.chNormalize->setChecked(true);
    loaded();
    EXPECT_EQ(edited(14), QString());
    EXPECT_EQ(boxes(), QStringList(u"Error 1"_qs));
    form.chHissFilter->setChecked(true);
    EXPECT_EQ(loaded(), QString());
    form.txbSilenceThreshold->setText(u"32768"_qs);
    Q_EMIT EDTX.SoundLoadingDone(1);
    processor->stop();
    Q_EMIT EDTX.SoundEditDone(19, 1);
    EXPECT_EQ(asked(), QString());
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(Chain, ARunRefusedOrWithoutFilesMovesNothing) {
    open({u"a.wav"_qs});
    form.txbSilencePerc->setText(u"10.1"_qs);
    EXPECT_EQ(process(), QString());
    EXPECT_TRUE(form.cbProcess->isEnabled() && raw().isEmpty());
    form.txbSilencePerc->setText(u"5"_qs);
    form.txbNormPerc->setText(u"59"_qs);
    EXPECT_EQ(process(), QString());
    EXPECT_EQ(boxes().size(), 2);
    QFile::remove(in(u"a.wav"_qs));
    form.txbNormPerc->setText(u"60"_qs);
    EXPECT_EQ(endOf([&] { process(); }),
              u"cbProcess_Click: File not found (%1), Line 60"_qs.arg(in(u"a.wav"_qs)));
}

TEST_F(Chain, ACutAtTheStartAsLongAsTheSoundIsToldAsEmptying) {
    open({u"a.wav"_qs});
    form.chCutEnd->setChecked(true);
    form.txbCutStart->setText(u"10000"_qs);
    process();
    loaded();
    edited(1);
    edited(1);
    exported();
    EXPECT_TRUE(test::takeSentences(desk.notices.told).join(u'|').contains(u"emptied"));
}

TEST_F(Chain, TheDelayHoldsEachStepAlsoOverMidnight) {
    struct Night : platform::Clock {
        QDateTime now() const override { return {}; }
        double Timer() const override { return (*next)++ < 3 ? 86399.0 : (*next - 3) * 0.25; }
        std::unique_ptr<int> next = std::make_unique<int>(0);
    } night;
    open({u"a.wav"_qs}, {desk.failure, state, database, desk.boxes, cmdlg, files, desk.notices,
                         night, EDT, EDTX, [] {}});
    form.txbDelay->setText(u"1000"_qs);
    Q_EMIT EDTX.SoundEditDone(0, 1);
    asked();
    EXPECT_EQ(*night.next, 7) << "the first look is at the start, the last a second after midnight";
}

TEST_F(Chain, TheEndOfAConcatenationIsWritten) {
    open({u"a.wav"_qs, u"b.wav"_qs});
    for (QWidget* off :
         std::initializer_list<QWidget*>{form.cbClose, form.opBPMode[0], form.opBPMode[1]})
        off->setEnabled(false);
    form.chCutEnd->setChecked(true);
    form.txbCutStart->setText(u"0"_qs);
    loaded();
    Q_EMIT EDTX.AppendAutomationDone(1);
    EXPECT_EQ(asked(), u"SoundExport 48000 2 0 -1 a.wav");
    EXPECT_TRUE(edited(2).startsWith(u"SoundExport")) << "the cut's step is forgotten";
    EXPECT_TRUE(form.cbClose->isEnabled() && form.opBPMode[0]->isEnabled() &&
                form.opBPMode[1]->isEnabled());
}

TEST_F(Chain, OnlyServiceSeesTheTrace) {
    open({u"a.wav"_qs});
    const auto click = [&](Qt::MouseButton button, QPointF at) {
        QMouseEvent release(QEvent::MouseButtonRelease, at, at, button, {}, {});
        QCoreApplication::sendEvent(form.Label15, &release);
    };
    click(Qt::RightButton, {5, 5});
    click(Qt::LeftButton, {5, -5});
    EXPECT_TRUE(boxes().isEmpty());
    for (const auto& [entry, shown] : std::initializer_list<std::pair<QString, bool>>{
             {u" 3172"_qs, false}, {u"03172"_qs, false}, {u"3172"_qs, true}}) {
        desk.boxes.entry = entry;
        click(Qt::LeftButton, {5, 5});
        EXPECT_EQ(boxes(), QStringList(u"Password:"_qs));
        EXPECT_EQ(!form.txbDebug->isHidden(), shown);
    }
    EXPECT_EQ(form.txbDebug->pos(), QPoint(584, 88));
    batch::Trace trace(*form.txbDebug);
    for (int line = 0; line <= 10000; ++line)
        trace.add(QString::number(line));
    EXPECT_EQ(form.txbDebug->document()->firstBlock().text(), u"1") << "it forgets the oldest";
}

}  // namespace
