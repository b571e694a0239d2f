#pragma once

#include <QStringList>

// Words that the notices of this room share.

namespace tarnwick::batch {

// What the boxes contain.
inline constexpr QStringView kCutStart = u"the cut at the start";
inline constexpr QStringView kCutEnd = u"the cut at the end";
inline constexpr QStringView kHead = u"the silence at the start";
inline constexpr QStringView kTail = u"the silence at the end";
inline constexpr QStringView kThresholdDecibels = u"the silence threshold in dB";
inline constexpr QStringView kMaximumDecibels = u"the maximum in dB";
inline constexpr QStringView kThresholdPercent = u"the silence threshold in percent";
inline constexpr QStringView kMaximumPercent = u"the maximum in percent";

// The detail of a fault: "the cut at the start: '1e99'".
QString typedFor(QStringView name, const QString& text);

// How many files a notice names by name.
inline constexpr qsizetype kMostNames = 4;

// "1 file" or "3 files".
QString filesOf(qsizetype count);

// "1 of 3 files was" or "2 of 3 files were".
QString filesOfAllWere(qsizetype count, qsizetype all);

// ": the disk is full", or nothing without a reason.
QString because(const QString& reason);

}  // namespace tarnwick::batch
