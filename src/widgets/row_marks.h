#pragma once

#include <QtGlobal>
#include <vector>

namespace tarnwick::widgets {

// What is remarkable about the stretches of speech that the last scan found. Stretch 1 lies between
// the first two silences, and so on.
struct RowMarks {
    std::vector<bool> flagged;    // by stretch, from 0; stretches past its end are not flagged
    std::vector<qint32> slipsMs;  // where small marks hang, ascending

    friend bool operator==(const RowMarks&, const RowMarks&) = default;
};

}  // namespace tarnwick::widgets
