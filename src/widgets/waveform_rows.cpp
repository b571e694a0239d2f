#include "widgets/waveform_rows.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick::widgets {

namespace {

constexpr int kReach = 3;  // pixels around a mark that belong to it

}  // namespace

bool WaveformRows::set(ShownRows rows) {
    if (rows == shown_) return false;
    shown_ = std::move(rows);
    return true;
}

bool WaveformRows::show(const RowMarks& marks) {
    return set({waveform_.silences().empty() ? RowMarks{} : marks, shown_.pressed});
}

bool WaveformRows::press(int row, const TimeRange& view) {
    pressedIn_ = view;
    return std::exchange(shown_.pressed, row) != row;
}

bool WaveformRows::forget() { return set({}); }

void WaveformRows::setTips(std::function<QString(int)> ofStretch,
                           std::function<QString(int)> ofSlip) {
    tipOfStretch_ = std::move(ofStretch);
    tipOfSlip_ = std::move(ofSlip);
}

QRect WaveformRows::reachOf(int slip, const WaveformLayout& layout, const TimeRange& view) const {
    const qint32 ms = shown_.marks.slipsMs[static_cast<std::size_t>(slip)];
    const auto column = static_cast<int>(std::floor(layout.axis(view).xOf(ms)));
    const int aside = layout.pixels(kMarkWidth / 2.0 + kReach);
    const int bottom = layout.wave().top() + layout.pixels(kMarkHeight + kReach);
    return layout.logical(
        QRect(QPoint(column - aside, layout.strip().top()), QPoint(column + aside, bottom)));
}

std::optional<int> WaveformRows::slipAt(const QPointF& place, const WaveformLayout& layout,
                                        const TimeRange& view) const {
    const auto slip = slipNearest(layout.logicalAxis(view).msOf(place.x()));
    if (!slip) return std::nullopt;
    // Distant marks are not compared in pixels, as their columns may exceed the range of an int.
    const qint32 ms = shown_.marks.slipsMs[static_cast<std::size_t>(*slip)];
    const TimeAxis axis = layout.logicalAxis(view);
    if (std::abs(axis.xOf(ms) - place.x()) > 2 * kMarkWidth) return std::nullopt;
    return QRectF(reachOf(*slip, layout, view)).contains(place) ? slip : std::nullopt;
}

std::optional<int> WaveformRows::slipNearest(double ms) const {
    if (!hasStrip()) return std::nullopt;
    return nearestMark(shown_.marks.slipsMs, ms);
}

std::optional<int> WaveformRows::slipMeant(const TimeRange& view) const {
    const Silences silences = waveform_.silences();
    if (const auto pressed = stretchTimes(silences, shown_.pressed)) {
        const auto last = static_cast<std::size_t>(shown_.pressed);
        const auto slip = slipNearest((pressed->beginMs + pressed->endMs) / 2);
        const qint32 ms = slip ? shown_.marks.slipsMs[static_cast<std::size_t>(*slip)] : -1;
        const bool seen = pressedIn_ == view || (ms >= view.beginMs && ms <= view.endMs);
        if (seen && ms >= silences[last - 1].start && ms <= silences[last].finish) return slip;
    }
    return slipNearest((view.beginMs + view.endMs) / 2);
}

std::optional<WaveformRows::Tip> WaveformRows::tipAt(const QPointF& place,
                                                     const WaveformLayout& layout,
                                                     const TimeRange& view) const {
    const Silences silences = waveform_.silences();
    const QRect area = layout.logical(layout.wave().united(layout.strip()));
    if (!hasStrip() || silences.empty() || !QRectF(area).contains(place)) return std::nullopt;
    if (const auto slip = slipAt(place, layout, view); slip && tipOfSlip_)
        return Tip{tipOfSlip_(*slip), reachOf(*slip, layout, view)};
    const TimeAxis axis = layout.logicalAxis(view);
    const int stretch = stretchAt(silences, axis.msOf(place.x() + 0.5));
    if (stretch == 0 || !tipOfStretch_) return std::nullopt;
    const TimeRange times = stretchTimes(silences, stretch).value();
    const auto column = [&](double ms) {
        return int(std::clamp(axis.xOf(ms), double(area.left()), double(area.right())));
    };
    return Tip{tipOfStretch_(stretch), QRect(QPoint(column(times.beginMs), area.top()),
                                             QPoint(column(times.endMs), area.bottom()))};
}

}  // namespace tarnwick::widgets
