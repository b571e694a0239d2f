#pragma once

#include <gtest/gtest.h>

#include <QMap>
#include <QStringList>
#include <map>

#include "engine/encoder_lists.h"
#include "engine/sound_editor.h"
#include "support/scripted_waveform.h"

namespace tarnwick::test {

// An editor without a sound engine. It records the calls and answers from its fields; the test
// emits the events itself. Arguments that the program never varies are checked here.
class ScriptedEditor : public engine::SoundEditor, public engine::Effects {
    // Records range and selection calls but keeps the values that the test set.
    struct Display : ScriptedWaveform {
        explicit Display(ScriptedEditor& editor) : editor(editor) { rangeEnd = 8000; }
        void AnalyzeSound() override { editor.calls << u"AnalyzeSound"_qs; }
        void SetDisplayRange(qint32 begin, qint32 end) override {
            editor.note(u"SetDisplayRange"_qs, {begin, end});
        }
        void SetSelection(qint16 available, qint32 begin, qint32 end) override {
            editor.note(u"SetSelection"_qs, {available, begin, end});
        }
        void ZoomIn() override { editor.calls << u"ZoomIn"_qs; }
        void ZoomOut() override { editor.calls << u"ZoomOut"_qs; }
        void ZoomFull() override { editor.calls << u"ZoomFull"_qs; }
        void ZoomToSelection(qint32 mode) override { editor.note(u"ZoomToSelection"_qs, {mode}); }

        ScriptedEditor& editor;
    };

  public:
    void InitEditor(engine::WindowHandle) override {}
    void EnableUndo(qint32) override {}
    void SetEditorOption(qint16 option) override { note(u"SetEditorOption"_qs, {option}); }
    void SetLoadMode(qint32 mode) override { note(u"SetLoadMode"_qs, {mode}); }
    qint32 LoadSound(const QString& path) override {
        calls << u"LoadSound "_qs + path.section(u'/', -1);
        return loadResult;
    }
    void SoundClose() override { calls << u"SoundClose"_qs; }
    qint32 LoadFromEditor(engine::WindowHandle) override { return engine::kNotSupported; }
    qint32 LastError() const override { return lastError; }
    qint32 GetSoundDuration() const override { return duration; }
    QString FormatMs(qint32 ms, qint32 mode, qint32 decimals) const override {
        EXPECT_EQ(std::pair(mode, decimals), std::pair(0, 1));
        return QString::number(ms);
    }
    void SoundPlay() override { calls << u"SoundPlay"_qs; }
    qint32 SoundPlayRange(qint32 begin, qint32 end) override {
        return note(u"SoundPlayRange"_qs, {begin, end});
    }
    void SoundPause() override { calls << u"SoundPause"_qs; }
    void SoundResume() override { calls << u"SoundResume"_qs; }
    void SoundStop() override { calls << u"SoundStop"_qs; }
    qint32 GetPlaybackPosition() const override { return position; }
    qint32 DeleteRange(qint32 begin, qint32 end) override {
        return note(u"DeleteRange"_qs, {begin, end});
    }
    qint32 InsertSilence(qint32 at, qint32 length) override {
        return note(u"InsertSilence"_qs, {at, length});
    }
    qint32 RemoveSilence(qint32 begin, qint32 end, qint16 threshold, qint32 mode) override {
        return note(u"RemoveSilence"_qs, {begin, end, threshold, mode});
    }
    bool UndoAvailable() const override { return false; }
    void Undo() override { calls << u"Undo"_qs; }
    qint32 SilencePositionsDetect(qint16 threshold, qint32 minimum, qint32 mode) override {
        EXPECT_EQ(mode, 0);
        note(u"SilencePositionsDetect"_qs, {threshold, minimum});
        return refused(engine::Operation::Scan, detectResult, {});
    }
    qint32 SilencePositionsGetCount() const override { return silenceCount; }
    void SilencePositionsGetRange(qint32 index, qint32& start, qint32& end) const override {
        start = index * 1000;
        end = start + 400;
    }
    engine::FileFacts factsOf(const QString& path) const override {
        return facts.value(path.section(u'/', -1), {.code = engine::kOk, .lengthMs = duration});
    }
    qint64 exportBytes(qint32, qint32, qint64 lengthMs) const override {
        return lengthMs * bytesPerMs;
    }
    qint32 SoundExport(qint32 frequency, qint32 channels, qint32 mode, qint32 begin, qint32 end,
                       const QString& path, std::function<bool()> before) override {
        EXPECT_EQ(mode, 0);
        if (path.isEmpty() || refuseExports)
            return refused(engine::Operation::Export, engine::kBadFormat, path);
        if (before && !before()) return engine::kOk;
        ++pending;
        exportPath = path;
        calls << u"SoundExport %1 %2 %3 %4 "_qs.arg(frequency).arg(channels).arg(begin).arg(end) +
                     path.section(u'/', -1);
        return engine::kOk;
    }
    qint32 SoundExportsPending() const override { return pending; }
    engine::Waveform& waveform() override { return display; }
    engine::Effects& effects() override { return *this; }
    engine::EncodeFormats& encodeFormats() override { return formats_; }
    void ApplyVolume(qint32 begin, qint32 end, qint32 mode, float level, qint32 reserved) override {
        EXPECT_EQ(std::tuple(mode, level, reserved), std::tuple(0, 0.0F, 0));
        note(u"ApplyVolume"_qs, {begin, end});
    }
    qint32 Normalize(qint32 begin, qint32 end, float percent, float attack,
                     float release) override {
        calls << u"Normalize %1 %2 %3 %4 %5"_qs.arg(begin).arg(end).arg(percent).arg(attack).arg(
            release);
        return engine::kOk;
    }

    void endExport() {
        --pending;
        Q_EMIT SoundExportDone(1);
    }
    // The last requested export fails.
    void failExport(engine::ErrorCode code, int systemError = 0) {
        --pending;
        Q_EMIT failed({engine::Operation::Export, exportPath, code, systemError});
        Q_EMIT SoundExportDone(0);
    }
    // The calls since the last call of this function, joined by '|'.
    QString taken() { return std::exchange(calls, {}).join(u'|'); }
    qint32 note(const QString& name, std::initializer_list<qint32> arguments) {
        QString call = name;
        for (const qint32 argument : arguments)
            call += u' ' + QString::number(argument);
        calls << call;
        return engine::kOk;
    }

    QStringList calls;
    QString exportPath;
    qint32 loadResult = 0;
    qint32 detectResult = 0;
    qint32 lastError = 0;
    qint32 duration = 60000;
    qint32 position = 0;
    qint32 silenceCount = 3;
    qint32 pending = 0;
    bool refuseExports = false;
    QMap<QString, engine::FileFacts> facts;  // by bare name, for files that are not a sound
    qint64 bytesPerMs = 0;
    Display display{*this};

  private:
    qint32 refused(engine::Operation operation, qint32 code, const QString& path) {
        if (code != engine::kOk)
            Q_EMIT failed({operation, path, static_cast<engine::ErrorCode>(code), 0});
        return code;
    }

    engine::Mp3Rates mp3_;
    engine::WavCodecs codecs_;
    engine::EncodeFormats formats_{mp3_, codecs_};
};

}  // namespace tarnwick::test
