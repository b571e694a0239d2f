#pragma once

#include <array>
#include <variant>

// The contents of the delivered settings database: the forms' default values, row by row.

namespace tarnwick::seed {

using Value = std::variant<std::monostate, int, const char*>;  // Null, a number or a text

inline constexpr int kColumns = 12;  // F2 to F13

struct AdminRow {
    int number;  // F1
    std::array<Value, kColumns> values;
};

inline constexpr Value kNull{};

inline constexpr std::array kAdminRows{
    // Batch Processor, silences and cuts, from F3: silence ends, cut ends, silence at the start and
    // at the end in ms, threshold in dB, cut at the end and at the start in ms
    AdminRow{12, {kNull, 0, 0, 500, 500, "-26", 300, 50}},
    // Batch Processor, levels, from F3: normalise, level in dB, hiss filter
    AdminRow{13, {kNull, 0, "0.0", 0}},
    // Batch Processor, output, from F3: convert; indices of format, frequency (48 kHz), depth
    // (24 bits) and channels (stereo); bit rate, codec and codec format
    AdminRow{14, {kNull, 1, 0, 5, 2, 1, "", "", ""}},
    // Segmentation and source format: silence in ms, threshold in dB, words per minute, variance in
    // percent, frequency, bits, channels, bit rate
    AdminRow{17, {1500, -35, 150, 50, 32000, 8, 1, 96}},
    // Script, playback and windows: import only some rows, from, to; back up the source; play on
    // from the list; ask for the sheet; first row is a header; wait after a scan (off, although
    // the form ticks it: it would block the window for a thousand seconds) and its length in
    // seconds; script in Word; one prompt for each row; window scale in percent
    AdminRow{18, {0, 101, 195, 1, 0, 0, 1, 0, 1000, 0, 1, 153}},
    // File naming: names from the script, prefix, start, increment, suffix; source type .mp3
    AdminRow{19, {1, "ACME_", 1000, 5, "", 1}},
};

}  // namespace tarnwick::seed
