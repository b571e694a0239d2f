#include "segmentation/reload_chain.h"

#include "desk.h"

using namespace tarnwick;

namespace {

struct Chain : test::MainDesk {
    QStringList done;
    segmentation::StatusLine status{form};
    segmentation::ReloadChain chain{
        form,
        {desk.failure, session, EDT, desk.boxes, status, [this] { done << u"backup"_qs; },
         [this] { done << u"process"_qs; }}};

    QString said() const { return form.lbStatus->text(); }
};

TEST_F(Chain, ALoadAddsBothPausesAndThenProcesses) {
    session.vsLoadStage = u"Initial Load"_qs;
    form.txbSilence->setText(u"1500.5 ms"_qs);
    form.chBUSource->setChecked(true);
    for (const QString& step :
         {u"InsertSilence 0 1500"_qs, u"InsertSilence 60000 1500"_qs, u"process"_qs}) {
        if (step.startsWith(u"InsertSilence 0"))
            Q_EMIT EDT.SoundLoadingDone(1);
        else
            Q_EMIT EDT.SoundEditDone(engine::kInsertSilence, 1);
        EXPECT_TRUE(EDT.taken().isEmpty()) << "the event itself must not drive the engine";
        fire(form.TimerReload);
        EXPECT_EQ(EDT.taken(), QStringList(u"AnalyzeSound"_qs));
        Q_EMIT EDT.WaveAnalysisDone();
        fire(form.TimerDisplayWaveform);
        const QStringList calls = EDT.taken() + done.filter(u"process"_qs);
        EXPECT_EQ(calls, QStringList({u"SetDisplayRange 0 -1"_qs, step}));
    }
    EXPECT_EQ(session.vsLoadStage, u"End Silence Added");
    EXPECT_EQ(done.count(u"backup"_qs), 3);
    EXPECT_TRUE(form.cbProcess->isEnabled());
    EXPECT_TRUE(form.CommandPlay->isEnabled());
    EXPECT_FALSE(chain.soundIsChanging());
}

TEST_F(Chain, ALaterEditTakesTheShortWayAndBringsTheViewBack) {
    session.vsLoadStage = u"End Silence Added"_qs;
    session.vlSavedRangeBegin = 1000;
    session.vlSavedRangeEnd = 3000;
    form.chBUSource->setChecked(false);
    Q_EMIT EDT.SoundEditStarted();
    EXPECT_TRUE(chain.soundIsChanging());
    Q_EMIT EDT.SoundEditDone(engine::kDeleteRange, 1);
    Q_EMIT EDT.SoundEditDone(engine::kDeleteRange, 1);  // merges with the first
    fire(form.TimerReload);
    Q_EMIT EDT.WaveAnalysisDone();
    fire(form.TimerDisplayWaveform);
    EXPECT_EQ(EDT.taken(), QStringList({u"AnalyzeSound"_qs, u"SetDisplayRange 1000 3000"_qs}));
    EXPECT_EQ(done, QStringList(u"process"_qs));
    EXPECT_FALSE(form.cbProcess->isEnabled());
}

TEST_F(Chain, StatusTextsAreWordForWord) {
    Q_EMIT EDT.SoundLoadingStarted();
    EXPECT_EQ(said(), u"Status6: Loading... 0%");
    EXPECT_EQ(form.txbCalculating->text(), u"Loading Audio File...");
    EXPECT_FALSE(form.txbCalculating->isHidden());
    EXPECT_FALSE(form.pbWAVFormBuilding->isHidden());
    Q_EMIT EDT.SoundLoadingPerc(7);
    EXPECT_EQ(said(), u"Status5: Loading... 7%");
    form.lbStatus->clear();
    Q_EMIT EDT.SoundLoadingPerc(7);
    EXPECT_EQ(said(), u"");
    Q_EMIT EDT.SoundLoadingDone(1);
    EXPECT_EQ(said(), u"Status4: Idle");
    EXPECT_TRUE(form.pbWAVFormBuilding->isHidden());
    Q_EMIT EDT.SoundEditStarted();
    EXPECT_EQ(said(), u"Status3: Editing...  0%");
    Q_EMIT EDT.SoundEditPerc(50);
    EXPECT_EQ(said(), u"Status2: Editing... 50%");
    Q_EMIT EDT.SoundEditDone(1, 1);
    EXPECT_EQ(said(), u"Status1: Idle");
    Q_EMIT EDT.WaveAnalysisStarted();
    EXPECT_EQ(said(), u"Status12: Analyzing waveform...");
    EXPECT_EQ(form.txbCalculating->text(), u"Analyzing Audio File...");
    Q_EMIT EDT.WaveAnalysisPerc(100);
    EXPECT_EQ(said(), u"Status7: Analyzing waveform... 100%");
    Q_EMIT EDT.WaveAnalysisDone();
    EXPECT_EQ(said(), u"Status13: Idle");
}

TEST_F(Chain, FailuresRaiseTheirBoxes) {
    EDT.lastError = engine::kNoMemory;
    EDT.duration = 0;
    Q_EMIT EDT.SoundLoadingDone(0);
    EXPECT_EQ(desk.boxes.shown.last(),
              u"Not enough memory to handle this file. Try splitting the file in 10-20 minutes "
              u"segments. Specify the Excel rows corresponding to each segment in Preferences.");
    fire(form.TimerReload);
    EXPECT_EQ(EDT.taken(), QStringList({u"SoundClose"_qs, u"SoundClose"_qs}));
    EDT.lastError = -6;
    Q_EMIT EDT.SoundEditStarted();
    Q_EMIT EDT.SoundEditDone(1, 0);
    EXPECT_EQ(desk.boxes.shown.last(),
              u"Cannot complete the operation due to the following error: -6");
    EXPECT_FALSE(form.TimerReload->isActive());
    EXPECT_FALSE(chain.soundIsChanging());
}

}  // namespace
