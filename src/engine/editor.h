#pragma once

#include <functional>
#include <stop_token>

#include "engine/delivered_sound.h"
#include "engine/editor_directory.h"
#include "engine/encoder_lists.h"
#include "engine/event_queue.h"
#include "engine/exports.h"
#include "engine/job_queue.h"
#include "engine/playback.h"
#include "engine/sound_editor.h"
#include "engine/waveform_model.h"
#include "engine/working_sound.h"

namespace tarnwick::engine {

// Implements the sound editor with the sound rooms. One worker thread loads, edits and scans in the
// order of the calls, other threads write files, and the player has its own. The UI thread gets
// results as events and waits for the other threads only in the destructor.
class Editor final : public SoundEditor, private Effects {
  public:
    explicit Editor(std::shared_ptr<EditorDirectory> directory);
    ~Editor() override;

    void InitEditor(WindowHandle form) override { directory_->add(form, &sound_); }
    void EnableUndo(qint32 mode) override { keepUndo_ = mode == 1; }
    void SetEditorOption(qint16 option) override;
    void SetLoadMode(qint32) override {}

    qint32 LoadSound(const QString& path) override;
    void SoundClose() override { dropSound(); }
    qint32 LoadFromEditor(WindowHandle form) override;
    qint32 LastError() const override { return lastError_; }

    qint32 GetSoundDuration() const override { return sound_.durationMs(); }
    QString FormatMs(qint32 ms, qint32 mode, qint32 decimals) const override;

    void SoundPlay() override;
    qint32 SoundPlayRange(qint32 beginMs, qint32 endMs) override;
    void SoundPause() override { playback_.pause(); }
    void SoundResume() override { playback_.resume(); }
    void SoundStop() override { playback_.stop(); }
    qint32 GetPlaybackPosition() const override { return playback_.positionMs(); }

    qint32 DeleteRange(qint32 beginMs, qint32 endMs) override;
    qint32 InsertSilence(qint32 positionMs, qint32 lengthMs) override;
    qint32 RemoveSilence(qint32 beginMs, qint32 endMs, qint16 threshold, qint32 mode) override;
    bool UndoAvailable() const override { return sound_.undoAvailable; }
    void Undo() override;

    qint32 SilencePositionsDetect(qint16 threshold, qint32 minimumMs, qint32 mode) override;
    qint32 SilencePositionsGetCount() const override;
    void SilencePositionsGetRange(qint32 index, qint32& startMs, qint32& endMs) const override;

    FileFacts factsOf(const QString& path) const override;
    qint64 exportBytes(qint32 frequencyHz, qint32 channels, qint64 lengthMs) const override;
    qint32 SoundExport(qint32 frequencyHz, qint32 channels, qint32 mode, qint32 beginMs,
                       qint32 endMs, const QString& path, std::function<bool()> before) override;
    qint32 SoundExportsPending() const override { return exports_.pending(); }

    Waveform& waveform() override { return waveform_; }
    Effects& effects() override { return *this; }
    EncodeFormats& encodeFormats() override { return formats_; }

  private:
    // Given to each job: the generation it reports to, and the token that tells it to stop.
    struct Ticket {
        quint64 generation;
        std::stop_token stop;
    };
    using Work = std::function<void(const Ticket&)>;

    void ApplyVolume(qint32 beginMs, qint32 endMs, qint32 mode, float level,
                     qint32 reserved) override;
    qint32 Normalize(qint32 beginMs, qint32 endMs, float percent, float attackPercent,
                     float releasePercent) override;

    void dropSound();
    // Opens the new sound. Called on the worker.
    using Opening = std::function<sound::Timeline(const sound::Progress&)>;
    void startLoading(const QString& path, Opening open);
    void analyse();
    void submit(Work work);
    // Posts a signal that changes nothing in the editor. Any thread.
    template <class... Parameters, class... Arguments>
    void announce(const Ticket& ticket, void (SoundEditor::*signal)(Parameters...),
                  Arguments... arguments) {
        events_.post(ticket.generation, [this, signal, arguments...] {
            Q_EMIT(this->*signal)(arguments...);
        });
    }

    // Progress that emits each percent by `signal` and stops when the ticket's sound is dropped.
    // Any thread.
    sound::Progress progressOf(const Ticket& ticket, void (SoundEditor::*signal)(qint16));

    // Edits the worker's sound and returns the new head; throws if the edit fails.
    using Edit = std::function<sound::Timeline(WorkingSound&, const sound::Progress&)>;
    qint32 startEdit(EditCommand command, Edit run);
    // Starts an edit that replaces the head and can be undone.
    qint32 startChange(EditCommand command, WorkingSound::Change change);
    qint32 refuseEdit(EditCommand command, ErrorCode code);

    void scanSilences(const Ticket& ticket, qint16 threshold, qint32 minimumMs);
    void scanAudibleRange(const Ticket& ticket, qint16 threshold);

    void exportDone(const Reason& reason, const QString& path, bool forgotten);
    // Both set lastError_ and emit failed(); fail() has no effect for kOk. `path` defaults to the
    // file of the sound.
    qint32 refuse(Operation operation, const Reason& reason, const QString& path = {});
    void fail(Operation operation, const Reason& reason, const QString& path = {});

    // Used by the UI thread.
    const std::shared_ptr<EditorDirectory> directory_;
    EventQueue events_;
    DeliveredSound sound_;
    ErrorCode lastError_ = kOk;
    bool keepUndo_ = false;
    bool headAndTail_ = false;    // option 100
    std::stop_source soundGone_;  // of the present sound's jobs
    Mp3Rates mp3_;
    WavCodecs acm_;
    EncodeFormats formats_{mp3_, acm_};
    Playback playback_;
    WaveformModel waveform_;

    // Used by the worker.
    WorkingSound working_;

    // Declared last, as their threads use all of the above.
    Exports exports_;
    JobQueue worker_;
};

}  // namespace tarnwick::engine
