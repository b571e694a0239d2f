#pragma once

#include <QObject>
#include <QRect>
#include <span>

#include "engine/waveform_settings.h"

namespace tarnwick::engine {

// A window of the desktop's toolkit, as an opaque handle; 0 is none.
using WindowHandle = quintptr;

// Extremes of one channel over one column of the picture, in parts of full scale (-1.0 to 1.0).
struct WaveColumn {
    float minimum = 0.0f;
    float maximum = 0.0f;
};

// What a display shows that may be out of date. `Sound`: it came, went, was edited or analysed,
// perhaps without a change of its duration. `Playback`: it began, paused, went on or is over.
enum class DisplayChange { Sound, Range, Selection, Settings, Playback };

// The waveform window of an editor: what part of the sound it shows and what is selected. All
// positions are milliseconds from the start of the sound as it stands, an end of -1 is the end of
// the sound. UI thread only; nothing here throws.
class Waveform : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    // Makes the display a child of `parent` at the given rectangle, in pixels.
    virtual void Create(WindowHandle parent, int left, int top, int width, int height) = 0;

    // Brings the peaks up to date with the sound. Ends with WaveAnalysisDone.
    virtual void AnalyzeSound() = 0;

    virtual void GetDisplayRange(qint32& beginMs, qint32& endMs) const = 0;
    // (0, -1) shows the whole sound. Not clipped to the sound. Raises WaveRangeChanged.
    virtual void SetDisplayRange(qint32 beginMs, qint32 endMs) = 0;

    // `available` is 1 when there is a selection or a cursor (begin equal to end), else 0.
    virtual void GetSelection(qint16& available, qint32& beginMs, qint32& endMs) const = 0;
    // (0, 0, 0) clears. Raises WaveSelectionChanged.
    virtual void SetSelection(qint16 available, qint32 beginMs, qint32 endMs) = 0;

    // By a factor of two around the selection or cursor, else around the centre of the view; never
    // past the sound or under a useful minimum. Each raises WaveRangeChanged.
    virtual void ZoomIn() = 0;
    virtual void ZoomOut() = 0;
    virtual void ZoomFull() = 0;
    virtual void ZoomToSelection(qint32 mode) = 0;  // `mode` is always 1

    virtual void GetSettings(WaveformSettings& settings) const = 0;
    virtual void SetSettings(const WaveformSettings& settings) = 0;

    // What the display paints from. `columns` divides [beginMs, endMs) evenly into columns.size()
    // columns and fills each with the channel's extremes; columns outside the sound stay (0, 0).
    // False when no analysed sound is there to be drawn. Cheap at any length and zoom.
    virtual int channels() const = 0;         // 0 without a sound
    virtual int sampleRate() const = 0;       // frames per second, 0 without a sound
    virtual qint32 duration() const = 0;      // ms, 0 without a sound
    virtual double playPosition() const = 0;  // ms, to the frame; also while paused; else -1
    virtual bool playing() const = 0;         // the position moves
    virtual bool columns(int channel, double beginMs, double endMs,
                         std::span<WaveColumn> columns) const = 0;

    // What the display reports of the mouse.
    virtual void notifyMouse(qint16 kind) = 0;

  Q_SIGNALS:
    // To the display: where it is to stand, and what of it is out of date. The change is told after
    // it was made, and before the event that the editor raises for it.
    void displayCreated(quintptr parent, QRect place);
    void displayChanged(tarnwick::engine::DisplayChange what);
};

}  // namespace tarnwick::engine
