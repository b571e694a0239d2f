#include <algorithm>
#include <fstream>
#include <limits>

#include "desk.h"

namespace tarnwick::engine {
namespace {

// A second of sound, two of room noise under the threshold, a second of sound.
const Samples kTake = wave(1000, 8000) + wave(2000, 50) + wave(1000, 8000);
constexpr qint16 kThreshold = 589;

TEST_F(Desk, AFailedLoadLeavesNoSound) {
    const std::pair<QString, qint32> cases[] = {
        {path("missing.wav"), kFileNotFound},
        {folder.path(), kFileNotFound},
        {QString(), kFileNotFound},
        {make("empty.wav", {}), kNotASound},
        {make("text.wav", QByteArray(5000, 'x')), kNotASound},
        {make("frameless.wav", wavFile({})), kNotASound},
    };
    for (const auto& [file, error] : cases) {
        load(kTake);
        EXPECT_EQ(editor->LoadSound(file), error) << qPrintable(file);
        test::pass(20);
        EXPECT_TRUE(events.empty());
        EXPECT_EQ(editor->LastError(), error) << qPrintable(file);
        EXPECT_EQ(editor->GetSoundDuration(), 0);
        EXPECT_EQ(editor->waveform().channels(), 0);
    }
}

TEST_F(Desk, NoSpeechSampleIsLostBetweenTwoSilences) {
    // Edges that lie between two milliseconds.
    const Samples quiet(70013, 0);
    const Samples speech(50007, 100000);
    load(quiet + speech + quiet);
    detect(0, 1000);
    ASSERT_EQ(silences(), "0-1587 2722-4309");
    for (const qint32 outside : {-1, 2}) {
        qint32 start = 1, end = 1;
        editor->SilencePositionsGetRange(outside, start, end);
        EXPECT_EQ(start + end, 0);
    }
    const Samples span = written("speech.wav", 1587, 2722);
    EXPECT_EQ(std::ranges::count(span, 100000), 50007);
    EXPECT_LT(span.size(), 50007u + 2 * 45);
    load(Samples(50, 100000) + Samples(10, 0) + Samples(50, 100000));
    detect(0, 0);
    EXPECT_EQ(silences(), "2-2") << "within a millisecond";
}

TEST_F(Desk, AQueuedEditWorksOnTheResultOfTheOneBefore) {
    load(kTake);
    editor->DeleteRange(0, 500);
    editor->DeleteRange(0, 500);
    ASSERT_EQ(editor->InsertSilence(4000, 100),
              kOk);  // the end of the sound at the time of the call
    EXPECT_EQ(editor->GetSoundDuration(), 4000);
    ASSERT_TRUE(sees("EditDone 2 1"));
    EXPECT_EQ(written("out.wav"), slice(kTake, kRate, kTake.size()) + Samples(kRate / 10, 0));
}

TEST_F(Desk, APositionPastTheLastWholeMillisecondIsTheEnd) {
    // Frames of the sound (44.1 per ms), ms cut from its start, the ms at which silence is
    // inserted, and the frame of that position.
    const std::tuple<qsizetype, qint32, qint32, qsizetype> cases[] = {
        {20, 0, 0, 0},    {60, 0, 1, 60},   {60, 0, 0, 0},  {203, 0, 3, 132},
        {203, 0, 4, 203}, {203, 1, 3, 159}, {115, 1, 1, 71}};
    for (const auto& [frames, cut, at, place] : cases) {
        load(Samples(static_cast<std::size_t>(frames), 1000));
        editor->DeleteRange(0, cut);
        insert(at, 10);
        const Samples out = written("out.wav");
        EXPECT_EQ(std::ranges::find(out, 0) - out.begin(), place) << frames << ' ' << at;
    }
}

TEST_F(Desk, UndoGoesBackBitForBitAndNoFurther) {
    load(kTake);
    EXPECT_EQ(written("before.wav"), kTake);
    editor->DeleteRange(700, 1700);
    editor->effects().ApplyVolume(0, 500, 0, 0.0f, 0);
    insert(250, 0);
    const Samples edited = written("edited.wav");
    EXPECT_EQ(edited.size(), kTake.size() - kRate);
    EXPECT_EQ(slice(edited, 0, kRate / 2), Samples(kRate / 2, 0));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(editor->UndoAvailable());
        undo();
    }
    EXPECT_EQ(said(), "EditStarted, EditPerc 100, EditDone 4 1");
    EXPECT_FALSE(editor->UndoAvailable());
    EXPECT_EQ(written("after.wav"), kTake);
    editor->Undo();
    ASSERT_TRUE(sees("EditDone 4 0"));
    EXPECT_EQ(editor->LastError(), kNotSupported);

    editor->EnableUndo(0);
    ends(editor->DeleteRange(0, -1), "EditDone 1 1");
    EXPECT_FALSE(editor->UndoAvailable());
    EXPECT_EQ(editor->GetSoundDuration(), 0);
    EXPECT_EQ(written("nothing.wav").size(), 0u);
}

TEST_F(Desk, RemoveSilenceCutsWhatIsQuietInItsRangeAndNothingElse) {
    // Edges off the milliseconds, a passage through zero of 8 frames, a gap of 2 ms.
    const Samples loud = wave(100, 8000);
    const Samples tail = wave(100, 8000) + Samples(8, 10) + loud;
    load(Samples(4419, 0) + loud + wave(2, 50) + tail + Samples(22101, -100));
    const struct {
        qint32 begin, end, shortest;
        Samples left;
    } cases[] = {
        {0, -1, 1, loud + tail},
        {0, -1, 3, loud + wave(2, 50) + tail},
        {50, 150, 1, Samples(2205, 0) + loud + wave(2, 50) + tail + Samples(22101, -100)},
        {602, 9999, 1, Samples(4419, 0) + loud + wave(2, 50) + tail + Samples(8803, -100)},
        {110, 190, 1, {}},  // all of it is loud
        {300, 300, 1, {}},  // an empty range
    };
    const Samples before = written("before.wav");
    for (const auto& [begin, end, shortest, left] : cases) {
        ends(editor->RemoveSilence(begin, end, kThreshold, shortest), "EditDone 14 1");
        const Samples after = written("after.wav");
        EXPECT_TRUE(after == (left.empty() ? before : left))
            << begin << " to " << end << ", " << after.size();
        undo();
    }
    EXPECT_TRUE(written("back.wav") == before);
    ends(editor->RemoveSilence(0, -1, 0, 1), "EditDone 14 1");
    EXPECT_EQ(written("zero.wav").size(), before.size() - 4419) << "what is silent altogether";
}

TEST_F(Desk, NormalizeBringsThePeakOfItsStretchToThePercent) {
    Samples take = wave(1000, 50) + wave(1000, 800) + wave(1000, 8000) + Samples(kRate, 0);
    take[60000] = -209716;  // between two of the same height, where peaks alone cannot tell
    load(take);
    // The largest sample of what a stretch became, in steps of 24 bits.
    const auto peak = [&](qint32 begin, qint32 end) {
        const auto [low, high] = std::ranges::minmax(written("out.wav", begin, end));
        return std::max(-low, high);
    };
    const auto normalize = [&](qint32 begin, qint32 end, float percent) {
        ends(editor->effects().Normalize(begin, end, percent, 100.0f, 100.0f), "EditDone 19 1");
        EXPECT_EQ(events.filter(QStringLiteral("EditPerc")).removeDuplicates(), 0);
    };
    normalize(1000, 2000, 50.0f);
    EXPECT_EQ(peak(1000, 2000), 4194304);
    EXPECT_EQ(peak(0, 1000), 50 * 256 + 179);  // outside nothing changed
    EXPECT_EQ(peak(2000, 3000), 8000 * 256 + 179);
    normalize(1000, 2000, 6.25f);  // of what the first one made
    EXPECT_EQ(peak(1000, 2000), 524288);
    const std::tuple<qint32, float, qint32> more[] = {{0, 100.0f, 8388607},  // as far as 24 bits go
                                                      {3000, 90.0f, 0},
                                                      {3000, 0.0f, 0},
                                                      {0, 0.0f, 0}};  // silence
    for (const auto& [begin, percent, highest] : more) {
        normalize(begin, -1, percent);
        EXPECT_EQ(peak(begin, -1), highest) << begin << ' ' << percent;
    }
}

TEST_F(Desk, AnEditorTakesOverTheSoundOfAnother) {
    const auto directory = createEditorDirectory();
    const auto other = createSoundEditor(directory);
    renew(directory);
    other->InitEditor(7);
    editor->InitEditor(8);
    EXPECT_EQ(editor->LoadFromEditor(6), kNoSound);
    EXPECT_EQ(editor->LoadFromEditor(7), kNoSound);
    ASSERT_EQ(other->LoadSound(make("other.wav", wavFile(kTake))), kOk);
    ASSERT_TRUE(waitUntil([&] { return other->GetSoundDuration() == 4000; }));
    other->DeleteRange(0, 1000);
    ASSERT_TRUE(waitUntil([&] { return other->GetSoundDuration() == 3000; }));
    ends(editor->LoadFromEditor(7), "LoadingDone 1");
    EXPECT_EQ(said(), "LoadingStarted, LoadingPerc 100, LoadingDone 1");
    EXPECT_FALSE(editor->UndoAvailable());
    const Samples taken = slice(kTake, kRate, kTake.size());
    EXPECT_TRUE(written("taken.wav") == taken);

    // From here on both go their own ways; one may even take over what it has itself.
    other->SoundClose();
    ends(editor->DeleteRange(0, 2000), "EditDone 1 1");
    ends(editor->LoadFromEditor(8), "LoadingDone 1");
    EXPECT_TRUE(written("own.wav") == slice(taken, 2 * kRate, taken.size()));
    EXPECT_EQ(editor->LoadFromEditor(7), kNoSound);
    EXPECT_EQ(editor->GetSoundDuration(), 1000);  // a refusal costs nothing

    auto third = createSoundEditor(directory);
    third->InitEditor(9);
    ASSERT_EQ(third->LoadFromEditor(8), kOk);
    ASSERT_TRUE(waitUntil([&] { return third->GetSoundDuration() == 1000; }));
    third->DeleteRange(0, 10);
    ASSERT_TRUE(waitUntil([&] { return third->GetSoundDuration() == 990; }));
    EXPECT_FALSE(third->UndoAvailable()) << "nobody asked for it";
    third.reset();
    EXPECT_EQ(editor->LoadFromEditor(9), kNoSound) << "gone with its window";
}

TEST_F(Desk, ExportsOverlapWithEditsAndKeepWhatTheySaw) {
    Samples take = kTake;
    for (int i = 0; i < 3; ++i)
        take = take + take;
    load(take);
    QString atDone;
    QObject::connect(editor.get(), &SoundEditor::SoundExportDone, editor.get(), [&] {
        atDone += QString::number(editor->SoundExportsPending());
        EXPECT_TRUE(QFile::exists(path("whole.wav")));
    });
    ASSERT_EQ(write("whole.wav"), kOk);
    ASSERT_EQ(write("part.wav", 1000, 1250), kOk);
    editor->encodeFormats().WAV.EncodeMode = kWav8;  // too late for those two
    editor->DeleteRange(0, 16000);
    editor->SilencePositionsDetect(kThreshold, 1500, 0);
    EXPECT_EQ(editor->SoundExportsPending(), 2);
    ASSERT_TRUE(waitUntil([&] { return events.size() == 6; })) << said();
    EXPECT_EQ(atDone, QStringLiteral("10"));
    EXPECT_EQ(samplesOf(path("whole.wav")), take);
    EXPECT_EQ(samplesOf(path("part.wav")), slice(take, kRate, kRate + 11025));
    EXPECT_EQ(editor->SilencePositionsGetCount(), 4);
}

TEST_F(Desk, WhatComesBeforeAnExportRunsElsewhereAndCanPreventIt) {
    load(kTake);
    editor->encodeFormats().FormatToUse = kWavContainer;
    editor->encodeFormats().WAV.EncodeMode = kWav24;
    for (const bool goesOn : {true, false}) {
        const QString out = path("out.wav");
        std::atomic<bool> released = false;
        QByteArray seen = "not run";
        const auto before = [&, here = QThread::currentThread()] {
            while (!released)
                QThread::msleep(1);
            seen = QThread::currentThread() == here ? "waited for"
                   : QFile::exists(out)             ? "old"
                                                    : "";
            return goesOn;
        };
        ASSERT_EQ(editor->SoundExport(kRate, 1, 0, 0, 1000, out, before), kOk);
        EXPECT_EQ(editor->SoundExportsPending(), 1);
        released = true;
        ASSERT_TRUE(sees(goesOn ? "ExportDone 1" : "ExportDone 0"));
        EXPECT_EQ(seen, goesOn ? "" : "old");
        EXPECT_EQ(samplesOf(out, kRate), slice(kTake, 0, kRate));
        editor->DeleteRange(0, 500);
        ASSERT_TRUE(sees("EditDone 1 1"));
        events.clear();
    }
}

TEST_F(Desk, AnExportOverItsOwnRecordingLeavesTheSoundWhole) {
    load(kTake);
    EXPECT_EQ(written("take.wav", 0, 1000), slice(kTake, 0, kRate));
    EXPECT_EQ(written("again.wav"), kTake);
    EXPECT_EQ(written("past.wav", 3500, 9000), slice(kTake, 154350, 176400));
    EXPECT_EQ(written("reversed.wav", 3500, 0).size(), 0u);
    EXPECT_EQ(written("beyond.wav", 9000, -1).size(), 0u);
    EXPECT_GE(QFile(path("reversed.wav")).size(), 44);
    events.clear();
    EXPECT_EQ(write("gone/x.wav"), kOk);
    ASSERT_TRUE(sees("ExportDone 0"));
    EXPECT_EQ(editor->LastError(), kWriteFailed);
}

TEST_F(Desk, EditsWithoutASoundEndInTheirEventAllTheSame) {
    editor->DeleteRange(0, 1);
    editor->InsertSilence(0, 1);
    editor->RemoveSilence(0, 1, 1, 1);
    editor->effects().ApplyVolume(0, 1, 0, 0.0f, 0);
    editor->effects().Normalize(0, 1, 1.0f, 100.0f, 100.0f);
    editor->Undo();
    ASSERT_TRUE(sees("EditDone 4 0"));
    EXPECT_EQ(said(),
              "EditDone 1 0, EditDone 2 0, EditDone 14 0, EditDone 3 0, EditDone 19 0, "
              "EditDone 4 0");
    EXPECT_EQ(editor->LastError(), kNoSound);
}

TEST_F(Desk, RefusedCallsRaiseNothing) {
    const QString out = path("out.wav");
    for (const ErrorCode expected : {kNoSound, kBadRange}) {
        if (expected == kBadRange) load(kTake);
        EXPECT_EQ(editor->SilencePositionsDetect(-1, 10, 0), expected);
        EXPECT_EQ(editor->SoundPlayRange(20, 10), expected);
        EXPECT_EQ(editor->SoundExport(kRate, 1, 0, 0, -1, {}), expected);
        EXPECT_EQ(editor->LastError(), expected);
    }
    EXPECT_EQ(editor->SoundExport(kRate, 3, 0, 0, -1, out), kBadFormat);
    EXPECT_EQ(editor->SoundExport(0, 1, 0, 0, -1, out), kBadFormat);
    editor->encodeFormats().WAV.EncodeMode = 5;
    EXPECT_EQ(editor->SoundExport(kRate, 1, 0, 0, -1, out), kBadFormat);
    EXPECT_EQ(editor->exportBytes(kRate, 1, 1000), -1);
    test::pass(20);
    EXPECT_EQ(said(), "");

    // Edits tell it by their event, too, and a sound can become too long.
    EXPECT_EQ(editor->DeleteRange(-2, 10), kBadRange);
    EXPECT_EQ(editor->SoundExport(kRate, 3, 0, 0, -1, out), kBadFormat);
    ASSERT_TRUE(sees("EditDone 1 0"));
    EXPECT_EQ(editor->LastError(), kBadRange) << "that of the event";
    const qint32 refused[] = {
        editor->DeleteRange(20, 10),
        editor->DeleteRange(0, -2),
        editor->InsertSilence(0, -1),
        editor->RemoveSilence(0, -1, -1, 1),
        editor->RemoveSilence(0, -1, 9, 0),
        editor->RemoveSilence(20, 10, 9, 1),
        editor->effects().Normalize(20, 10, 9.0f, 100.0f, 100.0f),
        editor->effects().Normalize(0, -1, -1.0f, 100.0f, 100.0f),
        editor->effects().Normalize(0, -1, std::numeric_limits<float>::infinity(), 100.0f, 100.0f)};
    EXPECT_THAT(refused, testing::Each(kBadRange));
    ASSERT_TRUE(waitUntil([&] { return events.size() == 10; }));
    EXPECT_EQ(said(),
              "EditDone 1 0, EditDone 1 0, EditDone 1 0, EditDone 2 0, EditDone 14 0, EditDone 14 "
              "0, EditDone 14 0, EditDone 19 0, EditDone 19 0, EditDone 19 0");
    const std::tuple<qint32, qint32, float> volumes[] = {
        {-5, 10, 0.0f}, {20, 10, 0.0f}, {0, 10, std::numeric_limits<float>::quiet_NaN()}};
    for (const auto& [begin, end, level] : volumes) {
        events.clear();
        editor->effects().ApplyVolume(begin, end, 0, level, 0);
        ASSERT_TRUE(sees("EditDone 3 0"));
        EXPECT_EQ(editor->LastError(), kBadRange);
    }
    editor->InsertSilence(0, std::numeric_limits<qint32>::max());
    ASSERT_TRUE(sees("EditDone 2 0"));
    EXPECT_EQ(editor->LastError(), kBadRange);
    EXPECT_FALSE(editor->UndoAvailable());
    EXPECT_EQ(written("same.wav"), kTake);
}

TEST_F(Desk, AClosedSoundReportsNothingMoreButItsFileIsWritten) {
    load(kTake);
    QStringList failed;
    QObject::connect(editor.get(), &SoundEditor::lateExportFailed, [&](const Failure& failure) {
        failed << failure.path + u' ' + reasonOf(failure);
    });
    ASSERT_EQ(write("late.wav"), kOk);
    ASSERT_EQ(write("gone/late.wav"), kOk);
    editor->InsertSilence(0, 100);
    editor->SilencePositionsDetect(kThreshold, 10, 0);
    editor->waveform().AnalyzeSound();
    editor->SoundClose();
    EXPECT_EQ(editor->GetSoundDuration(), 0);
    EXPECT_EQ(editor->SoundExportsPending(), 0);
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(path("late.wav")); }));
    test::pass(100);
    EXPECT_EQ(said(), "");
    EXPECT_EQ(failed, QStringList(path("gone/late.wav") +
                                  QStringLiteral(" the file or its folder is not there")));
    EXPECT_EQ(samplesOf(path("late.wav")), kTake);
    editor->waveform().AnalyzeSound();

    // A load that is replaced says nothing either; here from inside an event.
    const QString other = make("other.wav", wavFile(wave(500, 8000)));
    const auto once = std::make_shared<bool>(true);
    QObject::connect(editor.get(), &SoundEditor::SoundLoadingStarted, editor.get(), [&, once] {
        if (std::exchange(*once, false)) editor->LoadSound(other);
    });
    editor->LoadSound(path("take.wav"));
    ASSERT_TRUE(sees("LoadingDone 1"));
    test::pass(50);
    EXPECT_EQ(editor->GetSoundDuration(), 500);
    EXPECT_EQ(events.filter(QStringLiteral("LoadingDone")).size(), 1);
    EXPECT_EQ(events.count(QStringLiteral("LoadingStarted")), 2);
}

TEST_F(Desk, ARecordingChangedInPlaceFailsWhatComesNext) {
    editor->InitEditor(8);
    load(kTake);
    insert(0, 0);
    std::ofstream(QFile::encodeName(path("take.wav")).toStdString(), std::ios::app) << "more";
    EXPECT_EQ(editor->SoundPlayRange(0, -1), kSourceChanged);
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[&] { editor->InsertSilence(0, 10); }, "EditDone 2 0"},
        {[&] { editor->SilencePositionsDetect(1, 1, 0); }, "SilencesDone 0"},
        {[&] { write("out.wav"); }, "ExportDone 0"},
        {[&] { editor->Undo(); }, "EditDone 4 0"},
        {[&] {
             editor->SetEditorOption(100);
             editor->SilencePositionsDetect(1, 1, 0);
         },
         "Audible 0 0"},
    };
    for (const auto& [start, line] : cases) {
        editor->SoundPlayRange(-7, 0);  // puts another code into LastError
        start();
        ASSERT_TRUE(sees(line));
        EXPECT_EQ(editor->LastError(), kSourceChanged) << line;
    }
    EXPECT_EQ(editor->GetSoundDuration(), 4000);
    EXPECT_TRUE(editor->UndoAvailable());
    EXPECT_FALSE(QFile::exists(path("out.wav")));
    editor->SoundPlayRange(-7, 0);
    ends(editor->LoadFromEditor(8), "LoadingDone 0");
    EXPECT_EQ(editor->LastError(), kSourceChanged);
    EXPECT_EQ(editor->GetSoundDuration(), 0);
}

TEST_F(Desk, TheAudibleRangeIsToldOutwardAndItsHandlerMayEdit) {
    editor->SetEditorOption(100);
    load(Samples(10013, 0) + Samples(20000, 100000) + Samples(5000, 0));
    const auto tail = QObject::connect(
        editor.get(), &SoundEditor::AudibleRangeDetected, editor.get(), [&](qint32, qint32 end) {
            EXPECT_EQ(editor->DeleteRange(end, editor->GetSoundDuration()), kOk);
        });
    editor->SilencePositionsDetect(10, 1, 0);
    ASSERT_TRUE(sees("EditDone 1 1"));
    EXPECT_EQ(events.first(), QStringLiteral("Audible 227 681"));
    EXPECT_EQ(editor->GetSoundDuration(), 680);  // 30032 frames, rounded down
    QObject::disconnect(tail);
    // A tail of 500 ms behind what is audible, within the millisecond that the end was rounded by.
    undo();
    const qint32 behind = editor->GetSoundDuration() - 681;
    insert(editor->GetSoundDuration(), 500 - behind);
    EXPECT_EQ(written("tail.wav").size(), 52082u);  // 1181 ms
    insert(-1, 0);
    EXPECT_EQ(written("same.wav").size(), 52082u);
    detect(32767, 1, "Audible 0 0");
    load(Samples(10013, 0) + Samples(20000, 100000));
    detect(10, 1, "Audible 227 680");  // not behind the duration
}

}  // namespace
}  // namespace tarnwick::engine
