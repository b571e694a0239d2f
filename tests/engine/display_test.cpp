#include <fstream>
#include <thread>

#include "desk.h"

namespace tarnwick::engine {
namespace {

class Display : public Desk {
  protected:
    // "available begin end"
    std::string selection() const {
        qint16 available = 9;
        qint32 begin = 9, end = 9;
        editor->waveform().GetSelection(available, begin, end);
        return QStringLiteral("%1 %2 %3").arg(available).arg(begin).arg(end).toStdString();
    }
};

TEST_F(Display, ShowsWhatItIsToldAndReportsIt) {
    Waveform& waveform = editor->waveform();
    WaveformSettings settings;
    waveform.GetSettings(settings);
    EXPECT_EQ(settings.verticalScale(), 1.0f);
    EXPECT_EQ(selection(), "0 0 0");
    EXPECT_EQ(waveform.sampleRate(), 0);
    load(wave(4000, 8000));
    EXPECT_EQ(waveform.sampleRate(), kRate);
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[&] { waveform.SetDisplayRange(0, -1); }, "Range 0 4000"},
        {[&] { waveform.ZoomIn(); }, "Range 1000 3000"},
        {[&] { waveform.SetDisplayRange(5200, 3200); }, "Range 3200 5200"},
        {[&] { waveform.SetDisplayRange(3000, -1); }, "Range 3000 4000"},
        {[&] { waveform.SetSelection(1, -5, 9999); }, "Selection 1 0 4000"},
        {[&] { waveform.SetSelection(1, 3000, 1000); }, "Selection 1 1000 3000"},
        {[&] { waveform.ZoomToSelection(1); }, "Range 1000 3000"},
        {[&] { waveform.SetSelection(1, 500, 500); }, "Selection 1 500 500"},
        {[&] { waveform.ZoomIn(); }, "Range 0 1000"},
        {[&] { waveform.ZoomOut(); }, "Range 0 2000"},
        {[&] { waveform.SetSelection(1, 3900, -1); }, "Selection 1 3900 4000"},
        {[&] { waveform.notifyMouse(kMouseClearsSelection); }, "Mouse 3 0 0"},
        {[&] { waveform.SetSelection(0, 0, 0); }, "Selection 0 0 0"},
        {[&] { waveform.ZoomFull(); }, "Range 0 4000"}};
    std::vector<DisplayChange> changes;
    QObject::connect(&waveform, &Waveform::displayChanged,
                     [&](DisplayChange what) { changes.push_back(what); });
    for (const auto& [call, line] : cases) {
        events.clear();
        changes.clear();
        call();
        EXPECT_EQ(said(), line);
        const std::vector<DisplayChange> told(
            line[0] == 'M' ? 0 : 1,
            line[0] == 'R' ? DisplayChange::Range : DisplayChange::Selection);
        EXPECT_EQ(changes, told) << line;
    }
    // The whole sound stays the whole sound when it grows; a selection goes with its sound.
    insert(0, 1000);
    qint32 begin, end;
    waveform.GetDisplayRange(begin, end);
    EXPECT_EQ(end, 5000);
    // It also ends with it.
    const std::tuple<qint32, qint32, std::string> selections[] = {
        {3500, 4500, "1 3500 4000"}, {4000, 4500, "0 0 0"}, {3500, 4000, "1 3500 4000"}};
    for (const auto& [from, to, left] : selections) {
        waveform.SetSelection(1, from, to);
        undo();
        EXPECT_EQ(selection(), left);
        const bool changed = to > 4000;
        EXPECT_EQ(events.value(events.size() - 2).toStdString(),
                  changed ? "Selection " + left : "EditPerc 100");
        insert(0, 1000);
    }
    waveform.SetSelection(1, 1, 2);
    editor->SoundClose();
    EXPECT_TRUE(sees("Selection 0 0 0"));
    EXPECT_EQ(selection(), "0 0 0");
    waveform.GetDisplayRange(begin, end);
    EXPECT_EQ(end, 0);
}

TEST_F(Display, DrawsAfterTheFirstAnalysisAndFollowsEveryEdit) {
    Waveform& waveform = editor->waveform();
    std::vector<WaveColumn> columns(4);
    int changes = 0;
    QObject::connect(&waveform, &Waveform::displayChanged,
                     [&](DisplayChange what) { changes += what == DisplayChange::Sound; });
    EXPECT_FALSE(waveform.columns(0, 0, 2000, columns));
    load(wave(1000, 16384) + Samples(kRate, 0));
    EXPECT_FALSE(waveform.columns(0, 0, 2000, columns));
    waveform.AnalyzeSound();
    ASSERT_TRUE(sees("AnalysisDone"));
    EXPECT_EQ(said(), "AnalysisStarted, AnalysisPerc 100, AnalysisDone");
    EXPECT_GE(changes, 3);  // closed, loaded, analysed
    ASSERT_TRUE(waveform.columns(0, 0, 2000, columns));
    EXPECT_NEAR(columns[0].minimum, -0.5f, 0.001f);
    EXPECT_NEAR(columns[1].maximum, 0.5f, 0.001f);
    EXPECT_EQ(columns[3].maximum, 0.0f);
    ASSERT_TRUE(waveform.columns(0, 996, 1004, columns));
    EXPECT_NEAR(columns[1].maximum, 0.5f, 0.001f);
    EXPECT_EQ(columns[2].maximum, 0.0f) << "to the frame";
    EXPECT_FALSE(waveform.columns(1, 0, 2000, columns));

    const int before = changes;
    editor->effects().ApplyVolume(100, 200, 0, 0.0f, 0);  // as long as it was, and yet another
    ASSERT_TRUE(sees("EditDone 3 1"));
    EXPECT_GT(changes, before);
    insert(0, 1000);
    ASSERT_TRUE(waveform.columns(0, 0, 4000, columns));  // one column past the end
    EXPECT_EQ(columns[0].maximum, 0.0f);
    EXPECT_NEAR(columns[1].maximum, 0.5f, 0.001f);
    EXPECT_EQ(columns[3].maximum, 0.0f);
}

TEST_F(Display, GivesTheSilencesOfTheLastScanUntilAnEdit) {
    Waveform& waveform = editor->waveform();
    const auto fitting = [&] {
        QStringList all{waveform.scanned() ? QStringLiteral("scanned") : QStringLiteral("new")};
        for (const SilenceMs& silence : waveform.silences())
            all << QStringLiteral("%1-%2").arg(silence.start).arg(silence.finish);
        return all.join(u' ').toStdString();
    };
    // What the display can draw when it hears of the change, before the editor's own event.
    std::vector<std::string> seen;
    QObject::connect(&waveform, &Waveform::displayChanged, [&](DisplayChange what) {
        EXPECT_FALSE(events.contains(QStringLiteral("SilencesDone 1"))) << "too late";
        const bool scan = what == DisplayChange::Silences;
        seen.push_back((scan ? "scan: " : "sound: ") + fitting());
    });
    const auto shows = [&](const std::function<void()>& call, const std::string& expected) {
        seen.clear();
        call();
        EXPECT_EQ(seen.empty() ? "" : seen.back(), expected);
        events.clear();
    };
    const std::string pauses = "0-500 1500-2000";
    shows([&] { load(Samples(22050, 0) + wave(1000, 16384) + Samples(22050, 0)); }, "sound: new");
    const auto scan = [&] { detect(100, 400); };
    shows(scan, "scan: scanned " + pauses);
    shows([&] { insert(0, 10); }, "sound: scanned");
    EXPECT_EQ(silences(), pauses) << "still told to those who ask for the last scan";
    shows(scan, "scan: scanned 0-510 1510-2010");
    shows([&] { undo(); }, "sound: scanned");
    shows(scan, "scan: scanned " + pauses);
    std::ofstream(QFile::encodeName(path("take.wav")).toStdString(), std::ios::app) << "more";
    shows([&] { ends(editor->InsertSilence(0, 10), "EditDone 2 0"); }, "");
    EXPECT_EQ(fitting(), "scanned " + pauses) << "an edit that failed";
    shows([&] { detect(100, 400, "SilencesDone 0"); }, "scan: scanned");
    shows([&] { editor->SoundClose(); }, "sound: new");
    shows([&] { load(wave(1000, 100)); }, "sound: new");
    std::ofstream(QFile::encodeName(path("take.wav")).toStdString(), std::ios::app) << "more";
    shows([&] { detect(100, 400, "SilencesDone 0"); }, "scan: new");
}

TEST_F(Display, PlayingTellsItsStartItsPauseAndHowItEnded) {
    int changes = 0;
    QObject::connect(&editor->waveform(), &Waveform::displayChanged,
                     [&](DisplayChange what) { changes += what == DisplayChange::Playback; });
    load(wave(2000, 100));
    EXPECT_EQ(editor->GetPlaybackPosition(), 0);
    EXPECT_EQ(editor->SoundPlayRange(1500, 1800), kOk);
    ASSERT_TRUE(sees("Ended"));
    EXPECT_EQ(said(), "Started, Ended");
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(editor->GetPlaybackPosition(), 1800);
    EXPECT_EQ(editor->waveform().playPosition(), -1);

    events.clear();
    editor->SoundPlay();
    ASSERT_TRUE(waitUntil([&] { return editor->GetPlaybackPosition() > 50; }));
    editor->SoundPause();
    editor->SoundPause();
    ASSERT_TRUE(sees("Paused"));
    const qint32 held = editor->GetPlaybackPosition();
    test::pass(60);
    EXPECT_EQ(editor->GetPlaybackPosition(), held);
    EXPECT_EQ(static_cast<qint32>(editor->waveform().playPosition()), held);
    EXPECT_FALSE(editor->waveform().playing());
    editor->SoundResume();
    ASSERT_TRUE(waitUntil([&] { return editor->GetPlaybackPosition() > held; }));
    EXPECT_TRUE(editor->waveform().playing());
    editor->SoundPlayRange(1000, -1);
    editor->InsertSilence(0, 10);
    ASSERT_TRUE(sees("EditDone 2 1"));
    EXPECT_EQ(said().substr(0, 52), "Started, Paused, Started, Started, Stopped, EditStar");

    editor->SoundPlay();
    ASSERT_TRUE(waitUntil([&] { return editor->GetPlaybackPosition() > 50; }));
    events.clear();
    editor->SoundClose();
    EXPECT_TRUE(sees("Stopped"));
    EXPECT_EQ(editor->GetPlaybackPosition(), 0);
    editor->SoundPlay();
    EXPECT_TRUE(waitUntil([&] { return said() == "Stopped, Stopped"; }))
        << "refused, without a code";
    EXPECT_EQ(editor->LastError(), kNoSound);

    load(wave(300, 100));
    editor->SoundPlay();
    ASSERT_TRUE(sees("Started"));
    std::this_thread::sleep_for(std::chrono::milliseconds(700));  // it ends, nobody has heard yet
    editor->SoundPause();
    ASSERT_TRUE(sees("Ended"));
    test::pass(50);
    EXPECT_EQ(said(), "Started, Ended") << "requests in between emit no event";
}

}  // namespace
}  // namespace tarnwick::engine
