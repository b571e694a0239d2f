#include <gtest/gtest.h>

#include "desk.h"
#include "runtime/fault.h"
#include "segmentation/alignment_row.h"
#include "segmentation/export_run.h"
#include "segmentation/reload_chain.h"
#include "segmentation/row_view.h"
#include "segmentation/transport.h"
#include "support/text_table.h"

using namespace tarnwick::segmentation;
using namespace tarnwick;

namespace {

TEST(AlignmentRow, DeviationAndFlag) {
    // Words, start and end of the speech, tolerance; variance, and whether the cells are flagged.
    const char* const rows = R"(
10|1500|6500|50| 25 %|no|10|1500|7600|50| 52 %|flagged|10|1500|5500|50| 0 %|no|
10|1500|5499|50|-1 %|no|10|1500|5499|none|-1 %|flagged|10|1500|6000|50| 12 %|no|
10|1500|5000|50|-13 %|no|10|0|6000|50| 50 %|no|10|0|6001|50| 50 %|flagged|
10|0|0|50|-100 %|flagged|10|0|0|100|-100 %|no|10|9000|0|50|-325 %|flagged|
1|0|400|50| 0 %|no|1000|0|400000|50| 0 %|no)";
    for (const QStringList& told : test::rowsOf(rows, 6)) {
        const int words = told[0].toInt(), start = told[1].toInt(), end = told[2].toInt();
        const AlignmentRow row =
            alignRow({{}, {}, told[0]}, {0, 0, start}, {0, end, 0}, u"150"_qs, told[3]);
        EXPECT_EQ(row.Projected, words * 400);
        EXPECT_EQ(row.Actual, end - start);
        EXPECT_EQ(row.Variance, told[4]);
        EXPECT_EQ(row.flagged, told[5] == u"flagged") << end;
    }
    const std::pair<QString, QString> bad[] = {
        {u"10"_qs, u"fast"_qs}, {u"0"_qs, u"150"_qs}, {u"ten"_qs, u"150"_qs}};
    for (const auto& [words, speed] : bad)
        EXPECT_THROW(alignRow({{}, {}, words}, {}, {}, speed, u"50"_qs), runtime::Fault)
            << qPrintable(words);
}

TEST(RowView, ARowStandsAQuarterIntoTheView) {
    EXPECT_EQ(viewOfRow(5000, {0, 8000}), (ViewRange{3000, 11000}));
    EXPECT_EQ(viewOfRow(2000, {0, 8000}), std::nullopt);
    EXPECT_EQ(viewOfRow(2001, {1000, 9000}), (ViewRange{1, 8001}));
    EXPECT_EQ(viewOfRow(10, {0, 2}), (ViewRange{10, 12})) << "halves go to the even number";
}

TEST(RowView, TheViewJumpsBeforeTheHeadLeavesIt) {
    EXPECT_EQ(viewAfterJump(8999, {0, 10000}), std::nullopt);
    EXPECT_EQ(viewAfterJump(9000, {0, 10000}), (ViewRange{8000, 18000}));
    EXPECT_EQ(playedPercent(333, 1000), 33);
    EXPECT_EQ(playedPercent(1, 200), 0);
    EXPECT_EQ(playedPercent(3, 200), 2);
    EXPECT_EQ(playedPercent(2000, 1000), 100);
    EXPECT_EQ(playedPercent(21474836, 21474836), 100);
    EXPECT_THROW(playedPercent(21474837, 30000000), runtime::Fault);
}

TEST(ExportRun, GoesOnOnlyWhereTheNextRowIsKnown) {
    using enum ExportStep;
    const std::tuple<ExportMoment, ExportStep, bool> cases[] = {
        {{.rowsOfRun = 3, .rowsInList = 3}, Nothing, false},
        {{.runOpen = true}, Finish, false},
        {{.runOpen = true, .rowsOfRun = 1, .rowsInList = 1}, NextRow, false},
        {{.runOpen = true, .rowsOfRun = 1}, Wait, true},
        {{.runOpen = true, .rowsOfRun = 1, .listIsChanging = true}, Wait, false},
        {{.runOpen = true, .rowsOfRun = 1, .rowsInList = 1, .exportsPending = 1}, Nothing, false},
        {{.runOpen = true, .vfExportIndex = 3, .rowsOfRun = 3, .rowsInList = 4}, Finish, false},
        {{.runOpen = true, .vfExportIndex = 3, .rowsOfRun = 4, .rowsInList = 3}, Wait, true},
        {{.runOpen = true, .vfExportIndex = 2, .rowsOfRun = 3, .rowsInList = 3}, NextRow, false}};
    for (const auto& [moment, step, stuck] : cases) {
        EXPECT_EQ(nextExportStep(moment), step) << moment.vfExportIndex;
        EXPECT_EQ(isStuck(moment), stuck) << moment.vfExportIndex;
    }
}

struct Chain : test::MainDesk {
    QStringList done;
    segmentation::StatusLine status{form};
    segmentation::ReloadChain chain{
        form,
        {desk.failure, session, EDT, desk.boxes, status, [this] { done << u"backup"_qs; },
         [this] { done << u"process"_qs; }, [this] { done << u"gone"_qs; }}};
    segmentation::Transport transport{form, desk.failure, EDT, status};

    // Of what was edited or loaded, up to the view.
    void analyse() {
        fire(form.TimerReload);
        Q_EMIT EDT.WaveAnalysisStarted();
        Q_EMIT EDT.WaveAnalysisDone();
        fire(form.TimerDisplayWaveform);
    }
};

TEST_F(Chain, ALaterEditTakesTheShortWayAndBringsTheViewBack) {
    session.vsLoadStage = u"End Silence Added"_qs;
    session.vlSavedRangeBegin = 1000;
    session.vlSavedRangeEnd = 3000;
    form.chBUSource->setChecked(false);
    chain.editAsked();
    EXPECT_TRUE(chain.soundIsChanging());
    Q_EMIT EDT.SoundEditDone(engine::kDeleteRange, 1);
    Q_EMIT EDT.SoundEditDone(engine::kDeleteRange, 1);  // merges with the first
    EXPECT_TRUE(EDT.taken().isEmpty()) << "the event itself must not drive the engine";
    analyse();
    EXPECT_EQ(EDT.taken(), u"AnalyzeSound|SetDisplayRange 1000 3000");
    EXPECT_EQ(done, QStringList(u"process"_qs));
    EXPECT_FALSE(form.cbProcess->isEnabled());
    EXPECT_FALSE(chain.soundIsChanging());
}

TEST_F(Chain, ALoadAddsThePausesAtBothEndsOneByOne) {
    session.vsLoadStage = QString::fromUtf16(model::kInitialLoad);
    form.txbSilence->setText(u"1500.5"_qs);
    const std::pair<QString, QString> rounds[] = {
        {u"|InsertSilence 0 1500"_qs, u"Adding Initial Pause..."_qs},
        {u"|InsertSilence 60000 1500"_qs, u"Adding Final Pause..."_qs},
        {{}, u"Analyzing Audio File..."_qs}};
    Q_EMIT EDT.SoundLoadingStarted();
    EXPECT_EQ(form.txbCalculating->text(), u"Loading Audio File...");
    EXPECT_FALSE(form.txbCalculating->isHidden());
    Q_EMIT EDT.SoundLoadingDone(1);
    for (const auto& [edit, calculating] : rounds) {
        EXPECT_TRUE(chain.soundIsChanging());
        analyse();
        EXPECT_EQ(EDT.taken(), u"AnalyzeSound|SetDisplayRange 0 -1"_qs + edit);
        EXPECT_EQ(form.txbCalculating->text(), calculating);
        EXPECT_EQ(chain.soundIsChanging(), !edit.isEmpty());
        if (!edit.isEmpty()) Q_EMIT EDT.SoundEditDone(engine::kInsertSilence, 1);
    }
    EXPECT_EQ(done, QStringList({u"backup"_qs, u"backup"_qs, u"backup"_qs, u"process"_qs}));
    EXPECT_EQ(form.LabelTotalDuration->text(), u"60000");
    for (const QPushButton* button :
         {form.cbProcess, form.CommandPlay, form.CommandPause, form.CommandStop})
        EXPECT_TRUE(button->isEnabled());
}

TEST_F(Chain, TheSoundChangesUntilTheLastEditHasComeToAList) {
    EXPECT_FALSE(chain.soundIsChanging());
    const auto changingAfter = [this](qint32 result) {
        Q_EMIT EDT.SoundEditDone(engine::kDeleteRange, result);
        return chain.soundIsChanging();
    };
    EDT.lastError = engine::kBadRange;
    chain.editAsked();
    chain.editAsked();
    EXPECT_TRUE(changingAfter(0));
    EXPECT_FALSE(changingAfter(0));
    EXPECT_FALSE(form.TimerReload->isActive());
    EXPECT_EQ(desk.boxes.shown.size(), 2);
    EXPECT_EQ(desk.boxes.shown.last(),
              u"Cannot complete the operation due to the following error: -8");
    EXPECT_FALSE(changingAfter(0)) << "asked for by nobody here";
    chain.editAsked();
    EXPECT_TRUE(changingAfter(1));
    EXPECT_TRUE(changingAfter(0)) << "the one before is still on its way to a list";
    fire(form.TimerReload);
    Q_EMIT EDT.WaveAnalysisDone();
    EXPECT_TRUE(changingAfter(0));
    fire(form.TimerDisplayWaveform);
    EXPECT_FALSE(chain.soundIsChanging());
    session.vsLoadStage = QString::fromUtf16(model::kInitialLoad);
    Q_EMIT EDT.WaveAnalysisDone();
    fire(form.TimerDisplayWaveform);
    chain.editAsked();
    EXPECT_TRUE(changingAfter(0)) << "a pause that was not added, and then an edit";
    EXPECT_FALSE(changingAfter(0));
}

TEST_F(Chain, StatusTextsAreWordForWord) {
    EDT.position = 2500;
    const auto tick = [this] { QMetaObject::invokeMethod(form.TimerPlaybackPos, "timeout"); };
    struct Step {
        std::function<void()> raise;
        const char16_t* status;
        int bar;  // -1: hidden
    };
    const std::vector<Step> steps{
        {[this] { Q_EMIT EDT.SoundLoadingStarted(); }, u"Status6: Loading... 0%", 0},
        {[this] { Q_EMIT EDT.SoundLoadingPerc(0); }, u"", 0},
        {[this] { Q_EMIT EDT.SoundLoadingPerc(7); }, u"Status5: Loading... 7%", 7},
        {[this] { Q_EMIT EDT.SoundLoadingPerc(7); }, u"", 7},
        {[this] { Q_EMIT EDT.SoundLoadingDone(1); }, u"Status4: Idle", -1},
        {[this] { Q_EMIT EDT.WaveAnalysisStarted(); }, u"Status12: Analyzing waveform...", 0},
        {[this] { Q_EMIT EDT.WaveAnalysisPerc(100); }, u"Status7: Analyzing waveform... 100%", 100},
        {[this] { Q_EMIT EDT.WaveAnalysisDone(); }, u"Status13: Idle", -1},
        {[this] { Q_EMIT EDT.SoundPlaybackStarted(); }, u"Status10: Playing...2500", 0},
        {tick, u"Status15: Playing...2500", 4},
        {[this] { Q_EMIT EDT.SoundPlaybackPaused(); }, u"Status9: Playback paused", 4},
        {tick, u"Status14: Paused at 2500", 4},
        {[this] { Q_EMIT EDT.SoundPlaybackStarted(); }, u"Status10: Playing...2500", 0},
        {[this] { Q_EMIT EDT.SoundPlaybackEnded(); }, u"Status8: Idle", -1},
        {[this] { Q_EMIT EDT.SoundPlaybackStopped(); }, u"Status11: Idle", -1},
        {[this] { Q_EMIT EDT.SoundLoadingPerc(8); }, u"Status5: Loading... 8%", 8},
        {[this] { Q_EMIT EDT.SoundEditStarted(); }, u"Status3: Editing...  0%", 0},
        {[this] { Q_EMIT EDT.SoundEditPerc(50); }, u"Status2: Editing... 50%", 50},
        {[this] { Q_EMIT EDT.SoundEditDone(1, 0); }, u"Status1: Idle", -1}};
    for (const Step& step : steps) {
        form.lbStatus->clear();
        step.raise();
        EXPECT_EQ(form.lbStatus->text(), QStringView(step.status));
        const bool hidden = form.pbWAVFormBuilding->isHidden();
        EXPECT_EQ(hidden ? -1 : form.pbWAVFormBuilding->value(), step.bar)
            << qPrintable(form.lbStatus->text());
    }
    EXPECT_EQ(form.txbCalculating->text(), u"Analyzing Audio File...");
}

TEST_F(Chain, WhatIsDroppedIsNoLongerShownAsUnderWay) {
    Q_EMIT EDT.SoundLoadingStarted();
    Q_EMIT EDT.SoundLoadingPerc(60);
    chain.drop();
    EXPECT_TRUE(form.txbCalculating->isHidden() && form.pbWAVFormBuilding->isHidden());
    EXPECT_EQ(form.lbStatus->text(), u"Status: Idle");
    Q_EMIT EDT.SoundPlaybackStarted();
    chain.drop();
    EXPECT_FALSE(form.pbWAVFormBuilding->isHidden()) << "the end of what plays is still told";
    chain.editAsked();
    chain.editAsked();
    Q_EMIT EDT.SoundEditDone(engine::kUndo, 1);
    Q_EMIT EDT.WaveAnalysisDone();
    chain.drop();
    EXPECT_FALSE(form.TimerReload->isActive() || form.TimerDisplayWaveform->isActive() ||
                 chain.soundIsChanging());
}

TEST_F(Chain, ASoundThatDoesNotFitHasItsBox) {
    EDT.lastError = engine::kNoMemory;
    EDT.duration = 0;
    Q_EMIT EDT.SoundLoadingDone(0);
    EXPECT_EQ(desk.boxes.shown.last(),
              u"Not enough memory to handle this file. Try splitting the file in 10-20 minutes "
              u"segments. Specify the Excel rows corresponding to each segment in Preferences.");
    fire(form.TimerReload);
    EXPECT_EQ(EDT.taken(), u"SoundClose|SoundClose");
}

}  // namespace
