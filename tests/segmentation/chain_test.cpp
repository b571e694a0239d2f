#include "segmentation/reload_chain.h"

#include "desk.h"
#include "segmentation/transport.h"

using namespace tarnwick;

namespace {

struct Chain : test::MainDesk {
    QStringList done;
    segmentation::StatusLine status{form};
    segmentation::ReloadChain chain{
        form,
        {desk.failure, session, EDT, desk.boxes, desk.notices, status,
         [this] { done << u"backup"_qs; }, [this] { done << u"process"_qs; },
         [this] { done << u"gone"_qs; }}};
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
    fire(form.TimerReload);
    Q_EMIT EDT.WaveAnalysisDone();
    fire(form.TimerDisplayWaveform);
    EXPECT_EQ(EDT.taken(), QStringList({u"AnalyzeSound"_qs, u"SetDisplayRange 1000 3000"_qs}));
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
        fire(form.TimerReload);
        Q_EMIT EDT.WaveAnalysisStarted();
        Q_EMIT EDT.WaveAnalysisDone();
        fire(form.TimerDisplayWaveform);
        EXPECT_EQ(EDT.taken().join(u'|'), u"AnalyzeSound|SetDisplayRange 0 -1"_qs + edit);
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
    const segmentation::Transport transport(form, desk.failure, EDT, status);
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
    const segmentation::Transport transport(form, desk.failure, EDT, status);
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
    EXPECT_EQ(EDT.taken(), QStringList({u"SoundClose"_qs, u"SoundClose"_qs}));
}

}  // namespace
