#pragma once

#include <QPointF>
#include <QRect>
#include <QString>
#include <functional>
#include <optional>

#include "engine/waveform.h"
#include "widgets/waveform_bands.h"
#include "widgets/waveform_layout.h"

namespace tarnwick::widgets {

// What a view knows of the rows besides the sound: their marks, the pressed one, the texts about
// them, and whether all that is switched on. Finds what lies under the pointer. Places are in
// logical pixels. UI thread.
class WaveformRows {
  public:
    // A text about the part of the view that it is for.
    struct Tip {
        QString text;
        QRect place;
    };

    // `waveform` must outlive this object.
    explicit WaveformRows(const engine::Waveform& waveform) : waveform_(waveform) {}

    const ShownRows& shown() const { return shown_; }
    // Whether the picture has a strip. It stays during edits, so that the wave does not jump.
    bool hasStrip() const { return on_ && waveform_.scanned(); }

    void toggle() { on_ = !on_; }
    // These return true if the rows changed. Marks without silences are not kept.
    bool show(const RowMarks& marks);
    bool press(int row, const TimeRange& view);
    bool forget();

    void setTips(std::function<QString(int)> ofStretch, std::function<QString(int)> ofSlip);
    // None where there is nothing to tell.
    std::optional<Tip> tipAt(const QPointF& place, const WaveformLayout& layout,
                             const TimeRange& view) const;

    // The index of the mark at a place, or nearest to a time; none if there is none or if the
    // marks are switched off.
    std::optional<int> slipAt(const QPointF& place, const WaveformLayout& layout,
                              const TimeRange& view) const;
    std::optional<int> slipNearest(double ms) const;
    // The mark that the operator has in mind: one at the pressed stretch, or in the pauses beside
    // it, if it is in the view or the view is the one in which the row was pressed (a press does
    // not always move the view); else the mark nearest to the middle of the view.
    std::optional<int> slipMeant(const TimeRange& view) const;

  private:
    bool set(ShownRows rows);
    QRect reachOf(int slip, const WaveformLayout& layout, const TimeRange& view) const;

    const engine::Waveform& waveform_;
    bool on_ = true;
    ShownRows shown_;
    std::optional<TimeRange> pressedIn_;  // the view when the row was pressed
    std::function<QString(int)> tipOfStretch_;
    std::function<QString(int)> tipOfSlip_;
};

}  // namespace tarnwick::widgets
