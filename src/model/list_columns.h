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

// Text is left-aligned and all else centred. Data is not for reading: its column has the same width
// at every window scale.
enum class ColumnKind { Text, Figure, Data };

struct ListColumnDesign {
    const char* caption;
    int widthTwips;
    ColumnKind kind;

    bool scaled() const { return kind != ColumnKind::Data; }
    bool centred() const { return kind != ColumnKind::Text; }
};

inline constexpr std::array<ListColumnDesign, kListColumns> kListDesign{{
    {"Row", 750, ColumnKind::Text},
    {"File Name", 1700, ColumnKind::Text},
    {"Content", 4400, ColumnKind::Text},
    {"Start_msec", 10, ColumnKind::Data},
    {"Start Audio", 1000, ColumnKind::Figure},
    {"End_msec", 10, ColumnKind::Data},
    {"End Audio", 1000, ColumnKind::Figure},
    {"Actual", 1000, ColumnKind::Figure},
    {"Words", 1000, ColumnKind::Figure},
    {"Projected", 1000, ColumnKind::Figure},
    {"Variance", 1000, ColumnKind::Figure},
}};

}  // namespace tarnwick::model
