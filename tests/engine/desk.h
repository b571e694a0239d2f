#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QStringList>
#include <QTemporaryDir>

#include "engine/create_sound_editor.h"
#include "support/files.h"
#include "support/wait_until.h"
#include "support/wav_samples.h"

namespace tarnwick::engine {

using test::kRate;
using test::operator+;
using test::Samples;
using test::samplesOf;
using test::waitUntil;
using test::wave;
using test::wavFile;

inline Samples slice(const Samples& samples, qsizetype first, qsizetype end) {
    return Samples(samples.begin() + first, samples.begin() + end);
}

// An editor on a desk: a folder for files, and everything it reports as lines of text.
class Desk : public testing::Test {
  protected:
    Desk() { renew(); }

    void renew(const std::shared_ptr<EditorDirectory>& directory = {}) {
        editor = createSoundEditor(directory);
        editor->EnableUndo(1);
        hear(&SoundEditor::SoundLoadingStarted, "LoadingStarted");
        hear(&SoundEditor::SoundLoadingPerc, "LoadingPerc");
        hear(&SoundEditor::SoundLoadingDone, "LoadingDone");
        hear(&SoundEditor::SoundEditStarted, "EditStarted");
        hear(&SoundEditor::SoundEditPerc, "EditPerc");
        hear(&SoundEditor::SoundEditDone, "EditDone");
        hear(&SoundEditor::WaveAnalysisStarted, "AnalysisStarted");
        hear(&SoundEditor::WaveAnalysisPerc, "AnalysisPerc");
        hear(&SoundEditor::WaveAnalysisDone, "AnalysisDone");
        hear(&SoundEditor::SilencePosDetectionDone, "SilencesDone");
        hear(&SoundEditor::AudibleRangeDetected, "Audible");
        hear(&SoundEditor::SoundExportDone, "ExportDone");
        hear(&SoundEditor::SoundPlaybackStarted, "Started");
        hear(&SoundEditor::SoundPlaybackPaused, "Paused");
        hear(&SoundEditor::SoundPlaybackEnded, "Ended");
        hear(&SoundEditor::SoundPlaybackStopped, "Stopped");
        hear(&SoundEditor::WaveSelectionChanged, "Selection");
        hear(&SoundEditor::WaveRangeChanged, "Range");
        hear(&SoundEditor::WaveMouseNotification, "Mouse");
    }

    QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }

    QString make(const char* name, const QByteArray& content) const {
        test::writeFile(path(name), content);
        return path(name);
    }

    // Waits until the last event is `line`; not where the test has failed already.
    bool sees(const char* line) {
        const bool seen = !HasFatalFailure() && waitUntil([&] {
            return events.value(events.size() - 1) == QLatin1String(line);
        });
        EXPECT_TRUE(seen) << line << " after " << said();
        return seen;
    }
    std::string said() const { return events.join(u", ").toStdString(); }

    // Waits for the one event that ends what a call has just begun.
    void ends(qint32 result, const char* line) {
        EXPECT_EQ(result, kOk);
        events.clear();
        ASSERT_TRUE(sees(line));
    }
    void insert(qint32 at, qint32 ms) { ends(editor->InsertSilence(at, ms), "EditDone 2 1"); }
    void undo() {
        editor->Undo();
        ends(kOk, "EditDone 4 1");
    }
    void detect(qint16 threshold, qint32 ms, const char* line = "SilencesDone 1") {
        ends(editor->SilencePositionsDetect(threshold, ms, 0), line);
    }

    // Loads a recording and forgets the events of that.
    void load(const Samples& samples, int rate = kRate) {
        ASSERT_EQ(editor->LoadSound(make("take.wav", wavFile(samples, rate))), kOk);
        EXPECT_EQ(editor->GetSoundDuration(), 0) << "nothing changes before its event";
        ASSERT_TRUE(sees("LoadingDone 1"));
        events.clear();
    }
    // Writes a stretch as it is now; its event is still to come.
    qint32 write(const char* name, qint32 beginMs = 0, qint32 endMs = -1, int rate = kRate) {
        editor->encodeFormats().FormatToUse = kWavContainer;
        editor->encodeFormats().WAV.EncodeMode = kWav24;
        return editor->SoundExport(rate, 1, 0, beginMs, endMs, path(name));
    }
    Samples written(const char* name, qint32 beginMs = 0, qint32 endMs = -1, int rate = kRate) {
        ends(write(name, beginMs, endMs, rate), "ExportDone 1");
        return samplesOf(path(name), rate);
    }
    std::string silences() const {
        QStringList all;
        for (qint32 i = 0; i < editor->SilencePositionsGetCount(); ++i) {
            qint32 start, end;
            editor->SilencePositionsGetRange(i, start, end);
            all << QStringLiteral("%1-%2").arg(start).arg(end);
        }
        return all.join(u' ').toStdString();
    }

    QTemporaryDir folder;
    QStringList events;
    std::unique_ptr<SoundEditor> editor;

  private:
    template <class... Arguments>
    void hear(void (SoundEditor::*signal)(Arguments...), const char* name) {
        QObject::connect(editor.get(), signal, [this, name](Arguments... arguments) {
            QStringList line{QString::fromUtf8(name)};
            (void)(line << ... << QString::number(arguments));
            events << line.join(u' ');
        });
    }
};

}  // namespace tarnwick::engine
