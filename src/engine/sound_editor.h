#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "engine/effects.h"
#include "engine/encode_formats.h"
#include "engine/failure.h"
#include "engine/sound_events.h"
#include "engine/waveform.h"

namespace tarnwick::engine {

// What is known of a sound file that is not loaded.
struct FileFacts {
    ErrorCode code = kOk;  // what LoadSound would return for it
    int systemError = 0;   // errno of the system call that failed; 0 if none did
    qint64 lengthMs = 0;   // estimated for MP3; 0 if it cannot be loaded
    qint64 claimedMs = 0;  // length by the header of a file that ends before; otherwise 0
};

// A sound editor: holds at most one sound with its undo history, edits, analyses, plays and
// writes it.
//
// Times are milliseconds from the start of the present sound, with all edits applied. An end of -1
// is the end of the sound, and so is any position at or past GetSoundDuration. Returned durations
// and positions are rounded down.
//
// A function that names an ending event returns at once and works on the editor's own threads. The
// event is delivered later from the event loop of the UI thread, in the order of the work. An
// operation that returns an ErrorCode other than kOk was refused, and no event follows. The
// exceptions are edits, which then also end with SoundEditDone(command, 0), and SoundPlay, which
// has no code to return and then ends with SoundPlaybackStopped. After the sound was closed or
// replaced, work still under way for it reports nothing more, but requested output files are
// completed. If one of these fails, lateExportFailed is emitted.
//
// All functions and signals: UI thread. Nothing throws.
class SoundEditor : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    virtual void InitEditor(WindowHandle form) = 0;  // first call on an editor
    virtual void EnableUndo(qint32 mode) = 0;        // 1: keep an undo history
    // Option 100 is for callers that give sounds a head and a tail of a certain length:
    // SilencePositionsDetect reports the audible range instead of silences, silence inserted at the
    // end makes the duration a whole number of ms, and silences are rounded down if their ms fall
    // between frames. So edited heads and tails are within 1 ms of the requested length.
    virtual void SetEditorOption(qint16 option) = 0;
    virtual void SetLoadMode(qint32 mode) = 0;  // 0, before each LoadSound

    // Replaces the sound; the old one is dropped at once, even if the call is refused. Ends with
    // SoundLoadingDone. `path` is the full path of a WAV, AIFF or MP3 file, recognised by content,
    // not by name.
    virtual qint32 LoadSound(const QString& path) = 0;
    virtual void SoundClose() = 0;
    // Loads the sound of the editor of another window (or of this one) as a new sound without a
    // history. Ends with SoundLoadingDone. Refused if that editor has no sound; this editor then
    // keeps its own.
    virtual qint32 LoadFromEditor(WindowHandle form) = 0;
    virtual qint32 LastError() const = 0;  // of the last failure, an ErrorCode

    virtual qint32 GetSoundDuration() const = 0;  // ms, 0 without a sound
    // "00:00:00.000"; negative times begin with a minus sign. `mode` is 0 and `decimals` is 1.
    virtual QString FormatMs(qint32 ms, qint32 mode, qint32 decimals) const = 0;

    virtual void SoundPlay() = 0;
    virtual qint32 SoundPlayRange(qint32 beginMs, qint32 endMs) = 0;
    virtual void SoundPause() = 0;
    virtual void SoundResume() = 0;
    virtual void SoundStop() = 0;
    // In ms. Stays where playing last ended or was stopped.
    virtual qint32 GetPlaybackPosition() const = 0;

    // Edits; each stops playing and ends with SoundEditDone. An edit requested before the event of
    // another works on the result of that one.
    virtual qint32 DeleteRange(qint32 beginMs, qint32 endMs) = 0;
    virtual qint32 InsertSilence(qint32 positionMs, qint32 lengthMs) = 0;
    // Cuts stretches of the range in which all channels are at or under `threshold` (0 to 32767).
    // Between two louder places of the range, only stretches of at least `mode` ms (at least 1) are
    // cut, so that zero crossings stay; at the edges of the range, stretches of any length.
    virtual qint32 RemoveSilence(qint32 beginMs, qint32 endMs, qint16 threshold, qint32 mode) = 0;
    virtual bool UndoAvailable() const = 0;
    virtual void Undo() = 0;

    // Finds every maximal stretch of at least `minimumMs` in which all channels stay at or under
    // `threshold` (0 to 32767). Ends with SilencePosDetectionDone, or with AudibleRangeDetected in
    // an editor with option 100.
    virtual qint32 SilencePositionsDetect(qint16 threshold, qint32 minimumMs, qint32 mode) = 0;
    virtual qint32 SilencePositionsGetCount() const = 0;
    // Silence `index`, from 0; start rounded up and end rounded down. (0, 0) out of range.
    virtual void SilencePositionsGetRange(qint32 index, qint32& startMs, qint32& endMs) const = 0;

    // Reads the header of a file. Changes nothing, and no event follows.
    virtual FileFacts factsOf(const QString& path) const = 0;
    // Estimates how many bytes SoundExport would write for `lengthMs` of sound in the present
    // format; -1 if it would refuse the format.
    virtual qint64 exportBytes(qint32 frequencyHz, qint32 channels, qint64 lengthMs) const = 0;

    // Writes the stretch in the present format of encodeFormats(), from a snapshot of the sound.
    // Ends with SoundExportDone, one event per call, in the order of the calls. The target is
    // replaced completely or not at all. An empty path is refused and does no harm. `before` runs
    // first, on the thread that writes the file; if it returns false, nothing is written and the
    // export fails. It must not throw, and can outlive the caller.
    virtual qint32 SoundExport(qint32 frequencyHz, qint32 channels, qint32 mode, qint32 beginMs,
                               qint32 endMs, const QString& path,
                               std::function<bool()> before = {}) = 0;
    // Exports of the present sound whose SoundExportDone has not been delivered yet.
    virtual qint32 SoundExportsPending() const = 0;

    virtual Waveform& waveform() = 0;
    virtual Effects& effects() = 0;
    virtual EncodeFormats& encodeFormats() = 0;

  Q_SIGNALS:
    // An operation failed or was refused, and why. Emitted just before the event that ends the
    // operation, or before the function that refuses it returns. If there is no sound device,
    // playing continues in silence, and this is emitted once for each start with Play and
    // kPlaybackFailed.
    void failed(const engine::Failure& failure);
    // An export failed after its sound had been closed or replaced. Such a sound reports nothing
    // else; LastError does not change.
    void lateExportFailed(const engine::Failure& failure);

    void SoundLoadingStarted();
    void SoundLoadingPerc(qint16 percent);
    void SoundLoadingDone(qint32 bResult);  // 0 is failure
    void SoundEditStarted();
    void SoundEditPerc(qint16 percent);
    void SoundEditDone(qint16 nCommand, qint32 bResult);  // 1 is success
    void WaveAnalysisStarted();
    void WaveAnalysisPerc(qint16 percent);
    void WaveAnalysisDone();
    void SilencePosDetectionDone(qint32 bResult);
    // Begin rounded down, end rounded up; (0, 0) if nothing is audible, and after a failure.
    void AudibleRangeDetected(qint32 beginMs, qint32 endMs);
    void SoundExportDone(qint32 bResult);
    // For callers that append sounds by automation; no operation of the editor ends with it.
    void AppendAutomationDone(qint32 bResult);
    void SoundPlaybackStarted();
    void SoundPlaybackPaused();
    void SoundPlaybackEnded();    // the sound or range came to its end
    void SoundPlaybackStopped();  // SoundStop, an edit or another sound ended it
    void WaveSelectionChanged(qint16 available, qint32 beginMs, qint32 endMs);
    void WaveRangeChanged(qint32 beginMs, qint32 endMs);
    void WaveMouseNotification(qint16 kind, qint32 x, qint32 y);
};

}  // namespace tarnwick::engine
