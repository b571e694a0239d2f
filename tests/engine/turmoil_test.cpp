#include <random>

#include "desk.h"

namespace tarnwick::engine {
namespace {

// How many of its ending events an editor still owes.
class Debts {
  public:
    explicit Debts(SoundEditor& editor) : editor_(editor) {
        settles(&SoundEditor::SoundLoadingDone);
        settles(&SoundEditor::SoundEditDone);
        settles(&SoundEditor::SilencePosDetectionDone);
        settles(&SoundEditor::SoundExportDone);
        QObject::connect(&editor.waveform(), &Waveform::displayChanged, &editor, [this] {
            WaveColumn columns[200];
            editor_.waveform().columns(0, 0.0, editor_.GetSoundDuration() + 1.0, columns);
        });
        QObject::connect(&editor, &SoundEditor::WaveAnalysisDone, &editor, [this] { --owed_; });
    }

    void owe(qint32 result = kOk) { owed_ += result == kOk ? 1 : 0; }
    void forget() { owed_ = 0; }  // another sound comes
    int owed() const { return owed_; }
    int failed() const { return failed_; }

  private:
    template <class... Arguments>
    void settles(void (SoundEditor::*signal)(Arguments...)) {
        QObject::connect(&editor_, signal, &editor_, [this](Arguments... arguments) {
            --owed_;
            const qint32 results[] = {arguments...};
            // Two undos may have been asked for where one was left.
            if (results[sizeof...(Arguments) - 1] != 1 && editor_.LastError() != kNotSupported)
                ++failed_;
        });
    }

    SoundEditor& editor_;
    int owed_ = 0;
    int failed_ = 0;
};

class Turmoil : public Desk {
  protected:
    // Something that an operator, or two, might do next.
    void act(SoundEditor& one, Debts& debts, int round) {
        const auto at = [&] { return static_cast<qint32>(random_() % 8000); };
        switch (random_() % 12) {
            case 0:
                if (one.SoundPlayRange(at(), -1) == kOk && random_() % 2) one.SoundPause();
                return;
            case 1:
                return one.SoundResume();
            case 2:
            case 3:
                return debts.owe(one.InsertSilence(at(), 50));
            case 4:
                return debts.owe(one.RemoveSilence(0, at(), 600, 1));
            case 5:
                return debts.owe(one.effects().Normalize(0, -1, 80.0f, 100.0f, 100.0f));
            case 6:
                one.effects().ApplyVolume(at(), -1, 0, 0.9f, 0);
                return debts.owe();
            case 7:
                if (!one.UndoAvailable()) return;
                one.Undo();
                return debts.owe();
            case 8:
            case 9:
                one.encodeFormats().FormatToUse = round % 2 ? kWavContainer : kAiffContainer;
                return debts.owe(
                    one.SoundExport(kRate, 1 + round % 2, 0, 0, -1,
                                    folder.filePath(QStringLiteral("%1.wav").arg(random_() % 8))));
            case 10:
                one.waveform().AnalyzeSound();
                return debts.owe();
            default:
                return debts.owe(one.SilencePositionsDetect(600, 20, 0));
        }
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
        debts.forget();
        debts.owe(editor->LoadSound(file));
        ASSERT_TRUE(waitUntil([&] { return debts.owed() == 0; }));
        others.forget();
        others.owe(other->LoadFromEditor(1));
        for (int step = 0; step < 25; ++step) {
            act(*editor, debts, round);
            if (other->GetSoundDuration() > 0) act(*other, others, round);
            QCoreApplication::processEvents();
        }
        if (round % 3 == 2) continue;  // the next load comes in the middle of it all
        ASSERT_TRUE(waitUntil([&] { return debts.owed() == 0 && others.owed() == 0; }))
            << debts.owed() << " and " << others.owed();
        EXPECT_EQ(debts.failed() + others.failed(), 0);
        while (editor->UndoAvailable()) {
            editor->Undo();
            debts.owe();
            ASSERT_TRUE(waitUntil([&] { return debts.owed() == 0; }));
        }
        EXPECT_TRUE(written("whole.wav") == take + take);
        debts.forget();
    }
}

}  // namespace
}  // namespace tarnwick::engine
