#pragma once

#include <array>

namespace tarnwick::model {

// Columns of the prompt list `lvAudioDetails`, in order.
enum ListColumn {
    kRow,
    kFileName,
    kContent,
    kStartMsec,
    kStartAudio,
    kEndMsec,
    kEndAudio,
    kActual,
    kWords,
    kProjected,
    kVariance,
    kListColumns
};

struct ListColumnDesign {
    const char* caption;
    int widthTwips;
    bool scaled;  // false: same width at every window scale (holds data, not for reading)
    bool centred;
};

inline constexpr std::array<ListColumnDesign, kListColumns> kListDesign{{
    {"Row", 750, true, false},
    {"File Name", 1700, true, false},
    {"Content", 4400, true, false},
    {"Start_msec", 10, false, true},
    {"Start Audio", 1000, true, true},
    {"End_msec", 10, false, true},
    {"End Audio", 1000, true, true},
    {"Actual", 1000, true, true},
    {"Words", 1000, true, true},
    {"Projected", 1000, true, true},
    {"Variance", 1000, true, true},
}};

}  // namespace tarnwick::model
