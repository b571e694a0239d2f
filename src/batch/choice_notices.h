#pragma once

#include <QList>
#include <optional>

#include "platform/notices.h"

// The notices of choices in the window that would stop or spoil a run.

namespace tarnwick::batch {

// An entry of the settings that is stored as a number.
struct NumberEntry {
    QString name;  // "the cut at the start"
    QString text;
};

// Tells which of them are empty or no numbers, as the program ends when it stores those; none if
// all are well.
std::optional<platform::Notice> noticeOfEntries(const QList<NumberEntry>& entries);

// The choices that a run goes by.
struct Choices {
    bool mp3 = false;
    bool frequencyOn = true;      // one that MP3 supports is selected
    QString bitRate = {};         // as typed or chosen: "128 kbps"
    QList<double> bitRates = {};  // bits per second, of that frequency
    // Levels as shown.
    QString thresholdPercent = {};
    bool normalizes = false;
    QString maximumDecibels = {};
    QString maximumPercent = {};
    bool setsEnds = false;
    QString thresholdDecibels = {};
};

QList<platform::Notice> noticesOf(const Choices& choices);

// The bit rate in bits per second. Strict: faults unless the text is a number and five more
// characters.
double bitRateOf(const QString& text);

}  // namespace tarnwick::batch
