#pragma once

#include <QObject>
#include <QString>

#include "engine/effects.h"
#include "engine/encode_formats.h"
#include "engine/sound_events.h"
#include "engine/waveform.h"

namespace tarnwick::engine {

// A sound editor: holds at most one sound with its undo history, edits, analyses, plays and
// writes it.
//
// Times are milliseconds from the start of the sound as it now stands, with all edits applied; an
// end of -1 is the end of the sound, and so is any position at or past GetSoundDuration. Durations
// and positions given out are rounded down.
//
// Where a function names an ending event, it returns at once, the work goes on on the editor's own
// threads, and the event is delivered later from the event loop of the UI thread, in the order of
// the work. An operation that returns an ErrorCode other than kOk was refused: no event follows,
// except for edits, which end in SoundEditDone(command, 0) when they are refused, too. SoundPlay,
// which has no code to return, then ends in SoundPlaybackStopped.
// Closing or replacing the sound makes what still runs for it silent: it reports nothing more, but
// output files that were asked for are completed.
//
// All functions and signals: UI thread. Nothing throws.
class SoundEditor : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    virtual void InitEditor(WindowHandle form) = 0;  // first call on an editor
    virtual void EnableUndo(qint32 mode) = 0;        // 1: keep an undo history
    // 100, for those who give sounds a head and a tail of so many ms: SilencePositionsDetect tells
    // the audible range instead of silences, silence inserted at the end makes the duration a whole
    // number of ms, and where ms fall between frames silences come out shorter: so that edited
    // heads and tails are within a ms of what was asked.
    virtual void SetEditorOption(qint16 option) = 0;
    virtual void SetLoadMode(qint32 mode) = 0;  // 0, before each LoadSound

    // Replaces the sound; the old one is gone at once, also when the call is refused. Ends with
    // SoundLoadingDone. `path`: full path, WAV, AIFF or MP3, told by content, not by name.
    virtual qint32 LoadSound(const QString& path) = 0;
    virtual void SoundClose() = 0;
    // Takes over, as a new sound without a history, what the editor of another window (or this one)
    // holds. Ends with SoundLoadingDone. Refused where that editor has no sound: the own one stays.
    virtual qint32 LoadFromEditor(WindowHandle form) = 0;
    virtual qint32 LastError() const = 0;  // of the last failure, an ErrorCode

    virtual qint32 GetSoundDuration() const = 0;  // ms, 0 without a sound
    // "00:00:00.000"; a negative time has a minus sign in front. Extra arguments are 0 and 1.
    virtual QString FormatMs(qint32 ms, qint32 mode, qint32 decimals) const = 0;

    virtual void SoundPlay() = 0;
    virtual qint32 SoundPlayRange(qint32 beginMs, qint32 endMs) = 0;
    virtual void SoundPause() = 0;
    virtual void SoundResume() = 0;
    virtual void SoundStop() = 0;
    // In ms; stays where the last playing ended or was stopped.
    virtual qint32 GetPlaybackPosition() const = 0;

    // Edits; each stops what plays and ends with SoundEditDone. One that is asked for before the
    // event of another works on the result of that.
    virtual qint32 DeleteRange(qint32 beginMs, qint32 endMs) = 0;
    virtual qint32 InsertSilence(qint32 positionMs, qint32 lengthMs) = 0;
    // Cuts what lies at or under `threshold` (0 to 32767) in all channels inside the range, nothing
    // else. Between two louder places of the range only what lasts `mode` ms (at least 1) counts,
    // so that a wave keeps its passages through zero; at the edges of the range everything counts.
    virtual qint32 RemoveSilence(qint32 beginMs, qint32 endMs, qint16 threshold, qint32 mode) = 0;
    virtual bool UndoAvailable() const = 0;
    virtual void Undo() = 0;

    // Finds every longest stretch of at least `minimumMs` in which all channels stay at or under
    // `threshold` (0 to 32767). Ends with SilencePosDetectionDone, or with AudibleRangeDetected in
    // an editor with option 100.
    virtual qint32 SilencePositionsDetect(qint16 threshold, qint32 minimumMs, qint32 mode) = 0;
    virtual qint32 SilencePositionsGetCount() const = 0;
    // Silence `index` from 0, start rounded up and end rounded down; (0, 0) out of range.
    virtual void SilencePositionsGetRange(qint32 index, qint32& startMs, qint32& endMs) const = 0;

    // Writes the stretch in the format of encodeFormats() as it is at this moment, from a snapshot
    // of the sound. Ends with SoundExportDone, one event for each, in the order of the calls. The
    // target is replaced whole or not at all. An empty path is refused and does no harm.
    virtual qint32 SoundExport(qint32 frequencyHz, qint32 channels, qint32 mode, qint32 beginMs,
                               qint32 endMs, const QString& path) = 0;
    // Exports of the present sound whose SoundExportDone has not been delivered yet.
    virtual qint32 SoundExportsPending() const = 0;

    virtual Waveform& waveform() = 0;
    virtual Effects& effects() = 0;
    virtual EncodeFormats& encodeFormats() = 0;

  Q_SIGNALS:
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
    // Begin rounded down, end rounded up; (0, 0) when nothing is audible, and after a failure.
    void AudibleRangeDetected(qint32 beginMs, qint32 endMs);
    void SoundExportDone(qint32 bResult);
    // For those who append sounds by automation; no operation of the editor itself ends so.
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
