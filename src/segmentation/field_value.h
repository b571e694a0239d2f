#pragma once

#include <QString>

#include "runtime/fault.h"
#include "runtime/numbers.h"

namespace tarnwick::segmentation {

// Returns `convert` of the text of a box. A Fault from it gets the box and the text as its detail.
template <class Convert>
auto fieldValue(const QString& field, const QString& text, Convert&& convert) {
    return runtime::withDetail(field + u" is \""_qs + text + u'"', [&] { return convert(text); });
}

// The number at the start of a text, rounded; 0 if there is none. Faults with "Overflow".
inline qint32 leadingLong(const QString& text) { return runtime::roundToLong(runtime::val(text)); }

}  // namespace tarnwick::segmentation
