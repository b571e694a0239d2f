#pragma once

#include <QList>
#include <optional>

#include "platform/notices.h"

// Notices about choices in the window that would stop or spoil a run.

namespace tarnwick::batch {

// The text of a box that the settings store as a number.
struct NumberEntry {
    QString name;  // "the cut at the start"
    QString text;
};

// Names the entries that are empty or not a number: the program would end when it stores them.
// None if all can be stored.
std::optional<platform::Notice> noticeOfEntries(const QList<NumberEntry>& entries);

// The choices that decide a run.
struct Choices {
    bool mp3 = false;
    bool frequencyOn = true;      // the selected one is supported by MP3
    QString bitRate = {};         // as typed or chosen: "128 kbps"
    QList<double> bitRates = {};  // bits per second, possible at that frequency
    // The levels as their boxes show them.
    QString thresholdPercent = {};
    bool normalizes = false;
    QString maximumDecibels = {};
    QString maximumPercent = {};
    bool setsEnds = false;
    QString thresholdDecibels = {};
};

QList<platform::Notice> noticesOf(const Choices& choices);

// The bit rate in bits per second of a text such as "128 kbps". Strict: faults unless the text
// without its last five characters is a number.
double bitRateOf(const QString& text);

}  // namespace tarnwick::batch
