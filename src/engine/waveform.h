#pragma once

#include <QObject>
#include <QRect>
#include <span>

#include "engine/silence_ms.h"
#include "engine/waveform_settings.h"

namespace tarnwick::engine {

// A window of the desktop's toolkit, as an opaque handle; 0 is none.
using WindowHandle = quintptr;

// Extremes of one channel over one column of the picture, in parts of full scale (-1.0 to 1.0).
struct WaveColumn {
    float minimum = 0.0f;
    float maximum = 0.0f;
};

// The part of a display that is out of date. `Sound`: the sound was loaded, dropped, edited or
// analysed, perhaps with the same duration. `Silences`: a scan ended. `Playback`: it started,
// paused, continued or ended.
enum class DisplayChange { Sound, Silences, Range, Selection, Settings, Playback };

// The waveform window of an editor: the part of the sound it shows and the selection. All positions
// are milliseconds from the start of the present sound; an end of -1 is the end of the sound. UI
// thread only; nothing here throws.
class Waveform : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    // Makes the display a child of `parent` at the given rectangle, in pixels.
    virtual void Create(WindowHandle parent, int left, int top, int width, int height) = 0;

    // Brings the peaks up to date with the sound. Ends with WaveAnalysisDone.
    virtual void AnalyzeSound() = 0;

    virtual void GetDisplayRange(qint32& beginMs, qint32& endMs) const = 0;
    // (0, -1) shows the whole sound. Not clipped to the sound. Emits WaveRangeChanged.
    virtual void SetDisplayRange(qint32 beginMs, qint32 endMs) = 0;

    // `available` is 1 if there is a selection or a cursor (begin equal to end), else 0.
    virtual void GetSelection(qint16& available, qint32& beginMs, qint32& endMs) const = 0;
    // (0, 0, 0) clears it. Emits WaveSelectionChanged.
    virtual void SetSelection(qint16 available, qint32 beginMs, qint32 endMs) = 0;

    // ZoomIn and ZoomOut zoom by a factor of two around the selection or cursor, else around the
    // centre of the view; never past the sound or below a useful minimum. All emit
    // WaveRangeChanged.
    virtual void ZoomIn() = 0;
    virtual void ZoomOut() = 0;
    virtual void ZoomFull() = 0;
    virtual void ZoomToSelection(qint32 mode) = 0;  // `mode` is always 1

    virtual void GetSettings(WaveformSettings& settings) const = 0;
    virtual void SetSettings(const WaveformSettings& settings) = 0;

    // Data for painting the display. `columns` divides [beginMs, endMs) evenly into columns.size()
    // columns and fills each with the channel's extremes; columns outside the sound are (0, 0).
    // Returns false if there is no analysed sound to draw. Cheap at any length and zoom.
    virtual int channels() const = 0;         // 0 without a sound
    virtual int sampleRate() const = 0;       // frames per second, 0 without a sound
    virtual qint32 duration() const = 0;      // ms, 0 without a sound
    virtual double playPosition() const = 0;  // ms, playing or paused, exact to the frame; else -1
    virtual bool playing() const = 0;         // and not paused
    virtual bool columns(int channel, double beginMs, double endMs,
                         std::span<WaveColumn> columns) const = 0;
    virtual bool scanned() const = 0;  // the present sound was scanned since it was loaded
    // Those of the last scan, in order; none after an edit or a failed scan. Valid until the next
    // displayChanged.
    virtual std::span<const SilenceMs> silences() const = 0;

    // Called by the display to report the mouse.
    virtual void notifyMouse(qint16 kind) = 0;

  Q_SIGNALS:
    // For the display: its place, and what in it is out of date. The latter is emitted after the
    // change and before the editor's own event for it.
    void displayCreated(quintptr parent, QRect place);
    void displayChanged(tarnwick::engine::DisplayChange what);
};

}  // namespace tarnwick::engine
