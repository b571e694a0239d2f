#include "segmentation/row_view.h"

#include "runtime/arithmetic.h"
#include "runtime/numbers.h"

namespace tarnwick::segmentation {

std::optional<ViewRange> viewOfRow(qint32 rowStart, ViewRange now) {
    const double width = runtime::subtract(now.end, now.begin);
    if (rowStart - 0.25 * width <= 0.0) return std::nullopt;
    return ViewRange{runtime::roundToLong(rowStart - 0.25 * width),
                     runtime::roundToLong(rowStart + 0.75 * width)};
}

std::optional<ViewRange> viewAfterJump(qint32 position, ViewRange now) {
    const double width = runtime::subtract(now.end, now.begin);
    if (position + 0.1 * width < now.end) return std::nullopt;
    return ViewRange{runtime::roundToLong(now.begin + 0.8 * width),
                     runtime::roundToLong(now.end + 0.8 * width)};
}

qint32 playedPercent(qint32 position, qint32 limit) {
    const double percent = runtime::divide(runtime::multiply(position, 100), limit);
    return std::min(100, runtime::roundToLong(percent));
}

}  // namespace tarnwick::segmentation
