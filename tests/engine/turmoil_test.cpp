#include <QDir>
#include <filesystem>
#include <random>

#include "desk.h"

namespace tarnwick::engine {
namespace {

// The first is the longest by far, so that others are complete before it; some fail at once, and
// one target is written again and again under several spellings.
TEST_F(Desk, ManyExportsEndInTheOrderOfTheCalls) {
    Samples take = wave(1000, 8000);
    for (int i = 0; i < 5; ++i)
        take = take + take;
    load(take);
    std::filesystem::create_directory_symlink(folder.path().toStdString(),
                                              path("link").toStdString());
    std::filesystem::create_symlink("same.wav", path("alias.wav").toStdString());
    const char* const spellings[] = {"same.wav", "./same.wav", "link/same.wav", "link/./same.wav",
                                     "link/alias.wav"};
    QStringList expected;
    qsizetype told = 0;
    QObject::connect(editor.get(), &SoundEditor::SoundExportDone, editor.get(), [&] {
        EXPECT_EQ(QFile::exists(path(qPrintable(QString::number(told)))),
                  told % 4 == 0 && told % 7 != 3);
        EXPECT_EQ(editor->SoundExportsPending(), 39 - told++);
    });
    for (int i = 0; i < 40; ++i) {
        const QByteArray own = QByteArray::number(i);
        const bool fails = i % 7 == 3;
        const QByteArray name = fails        ? "gone/x.wav"
                                : i % 4 == 0 ? own
                                             : QByteArray(spellings[i % 5]);
        expected << QString::fromLatin1(fails ? "ExportDone 0" : "ExportDone 1");
        ASSERT_EQ(write(name.constData(), 0, i == 0 ? -1 : 10 * i), kOk);
    }
    ASSERT_TRUE(waitUntil([&] { return events.size() == 40; })) << said();
    EXPECT_EQ(events, expected);
    EXPECT_EQ(samplesOf(path("same.wav")), slice(take, 0, 390 * kRate / 1000));
}

// Gone in the midst of all, it gives up what is being written and leaves nothing behind.
TEST_F(Desk, AnEditorThatGoesLeavesNoHalfFile) {
    Samples take = wave(1000, 8000);
    for (int i = 0; i < 6; ++i)
        take = take + take;
    load(take);
    for (int i = 0; i < 40; ++i)
        ASSERT_EQ(write(QByteArray::number(i).constData()), kOk);
    editor->SoundPlay();
    editor->effects().Normalize(0, -1, 80.0f, 100.0f, 100.0f);
    editor->waveform().AnalyzeSound();
    test::pass(20);
    editor->SilencePositionsDetect(600, 20, 0);
    editor.reset();
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden)) {
        if (name != u"take.wav") {
            EXPECT_EQ(samplesOf(folder.filePath(name)), take);
        }
    }
    EXPECT_LT(QDir(folder.path()).count(), 20u);
}

// How many of its ending events an editor still owes, and how many told of a failure.
struct Debts {
    explicit Debts(SoundEditor& editor) {
        const auto settled = [this, &editor](qint32 result) {
            --owed;
            // Two undos may have been asked for where one was left.
            failed += result != 1 && editor.LastError() != kNotSupported;
        };
        for (const auto signal :
             {&SoundEditor::SoundLoadingDone, &SoundEditor::SilencePosDetectionDone,
              &SoundEditor::SoundExportDone})
            QObject::connect(&editor, signal, &editor, settled);
        QObject::connect(&editor, &SoundEditor::SoundEditDone, &editor,
                         [settled](qint32, qint32 result) { settled(result); });
        QObject::connect(&editor, &SoundEditor::WaveAnalysisDone, &editor,
                         [settled] { settled(1); });
        QObject::connect(&editor.waveform(), &Waveform::displayChanged, &editor, [&editor] {
            WaveColumn columns[200];
            editor.waveform().columns(0, 0.0, editor.GetSoundDuration() + 1.0, columns);
        });
    }
    void owe(qint32 result = kOk) { owed += result == kOk ? 1 : 0; }

    int owed = 0;  // 0 where another sound comes
    int failed = 0;
};

class Turmoil : public Desk {
  protected:
    // Something that an operator, or two, might do next.
    void act(SoundEditor& one, Debts& debts, int round) {
        const auto at = [&] { return static_cast<qint32>(random_() % 8000); };
        const std::function<void()> acts[] = {
            [&] {
                if (one.SoundPlayRange(at(), -1) == kOk && random_() % 2) one.SoundPause();
            },
            [&] { one.SoundResume(); },
            [&] { debts.owe(one.InsertSilence(at(), 50)); },
            [&] { debts.owe(one.RemoveSilence(0, at(), 600, 1)); },
            [&] { debts.owe(one.effects().Normalize(0, -1, 80.0f, 100.0f, 100.0f)); },
            [&] {
                one.effects().ApplyVolume(at(), -1, 0, 0.9f, 0);
                debts.owe();
            },
            [&] {
                if (!one.UndoAvailable()) return;
                one.Undo();
                debts.owe();
            },
            [&] {
                one.encodeFormats().FormatToUse = round % 2 ? kWavContainer : kAiffContainer;
                debts.owe(
                    one.SoundExport(kRate, 1 + round % 2, 0, 0, -1,
                                    folder.filePath(QStringLiteral("%1.wav").arg(random_() % 8))));
            },
            [&] {
                one.waveform().AnalyzeSound();
                debts.owe();
            },
            [&] { debts.owe(one.SilencePositionsDetect(600, 20, 0)); }};
        acts[random_() % std::size(acts)]();
    }

    std::mt19937 random_{7};
};

// Two editors at once, one of which takes its sound from the other, keep every promise of an event
// and lose no sound. Says most under the thread sanitizer.
TEST_F(Turmoil, EverythingAtOnceEndsInOrder) {
    const auto directory = createEditorDirectory();
    renew(directory);
    const auto other = createSoundEditor(directory);
    other->EnableUndo(1);
    editor->InitEditor(1);
    other->InitEditor(2);
    const Samples take = wave(1500, 9000) + wave(1000, 50) + wave(1500, 7000);
    const QString file = make("take.wav", wavFile(take + take));
    Debts debts(*editor);
    Debts others(*other);
    for (int round = 0; round < 12; ++round) {
        debts.owed = 0;
        debts.owe(editor->LoadSound(file));
        ASSERT_TRUE(waitUntil([&] { return debts.owed == 0; }));
        others.owed = 0;
        others.owe(other->LoadFromEditor(1));
        for (int step = 0; step < 25; ++step) {
            act(*editor, debts, round);
            if (other->GetSoundDuration() > 0) act(*other, others, round);
            QCoreApplication::processEvents();
        }
        if (round % 3 == 2) continue;  // the next load comes in the middle of it all
        ASSERT_TRUE(waitUntil([&] { return debts.owed == 0 && others.owed == 0; }))
            << debts.owed << " and " << others.owed;
        EXPECT_EQ(debts.failed + others.failed, 0);
        while (editor->UndoAvailable())
            undo();
        EXPECT_TRUE(written("whole.wav") == take + take);
    }
}

}  // namespace
}  // namespace tarnwick::engine
