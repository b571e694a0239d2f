#include "batch/choice_notices.h"

#include <QStringList>

#include "batch/words.h"
#include "platform/notice_words.h"
#include "runtime/fault.h"
#include "runtime/numbers.h"

namespace tarnwick::batch {

namespace {

using platform::Notice;

constexpr qsizetype kKbps = 5;  // " kbps"

// Whether `conversion` accepts the text without a fault.
template <class Conversion>
bool converts(Conversion conversion, const QString& text) {
    try {
        conversion(text);
        return true;
    } catch (const runtime::Fault&) {
        return false;
    }
}

bool isStrict(const QString& text) {
    return converts([](const QString& each) { return runtime::strictDouble(each); }, text);
}

// An entry behind the name of its box: " ('5 x')".
QString inBrackets(const QString& entry) {
    return entry.isEmpty() ? u" (empty)"_qs : u" ('"_qs + entry + u"')"_qs;
}

const QString& beforeProcess() {
    static const QString text =
        u"Change it before you press Process. If the run has already begun, the sources are in "
        u"Raw_Files."_qs;
    return text;
}

Notice endsProgram(QStringView name, const QString& text, const QString& when) {
    return {u"The entry for %1%2 is not a number: the program would end with an error %3."_qs.arg(
                name, inBrackets(text), when),
            {},
            {},
            beforeProcess()};
}

// A run uses the percent. It stays as it was if the level in decibels is not a number.
std::optional<Notice> noticeOfDecibels(QStringView name, const QString& decibels,
                                       const QString& percent) {
    if (isStrict(decibels) || !isStrict(percent)) return {};
    return Notice{
        u"The entry for %1%2 is not a number, so the run uses the percentage next to it, "
        u"%3."_qs.arg(name, inBrackets(decibels), percent),
        {},
        {},
        beforeProcess()};
}

std::optional<Notice> noticeOfRate(const Choices& choices) {
    if (!choices.mp3) return {};
    const bool noRate = !converts(bitRateOf, choices.bitRate);
    if (!choices.frequencyOn)
        return Notice{
            u"None of the frequencies that MP3 supports is selected"_qs +
                (noRate ? u", and the bit rate"_qs + inBrackets(choices.bitRate) +
                              u" is not a number: the program would end with an error at the "
                              u"first file."_qs
                        : u": the run would get stuck at its first file."_qs),
            {},
            {},
            u"Select one of the frequencies shown. "_qs + beforeProcess()};
    if (noRate) return endsProgram(u"the bit rate", choices.bitRate, u"at the first file"_qs);
    if (!choices.bitRates.contains(bitRateOf(choices.bitRate)))
        return Notice{
            u"MP3 has no bit rate of '%1' at this frequency: the run would get stuck at its "
            u"first file."_qs.arg(choices.bitRate),
            {},
            {},
            u"Choose a bit rate from the list. "_qs + beforeProcess()};
    return {};
}

std::optional<Notice> noticeOfMaximum(const Choices& choices) {
    if (!choices.normalizes) return {};
    if (!isStrict(choices.maximumPercent))
        return endsProgram(kMaximumPercent, choices.maximumPercent, u"at the first file"_qs);
    if (runtime::strictDouble(choices.maximumPercent) <= 100.0) return {};
    return Notice{
        u"The files would be normalized to %1 dB, which is above full scale: every loud "
        u"file would clip."_qs.arg(choices.maximumDecibels),
        {},
        {},
        u"Type the level with a minus, such as -1.0. "_qs + beforeProcess()};
}

}  // namespace

double bitRateOf(const QString& text) {
    if (text.size() < kKbps) runtime::invalidCall();
    return runtime::strictDouble(text.chopped(kKbps)) * 1000.0;
}

std::optional<Notice> noticeOfEntries(const QList<NumberEntry>& entries) {
    QStringList wrong;
    for (const NumberEntry& entry : entries)
        if (!runtime::isNumber(entry.text) || !isStrict(entry.text))
            wrong << entry.name + inBrackets(entry.text);
    if (wrong.isEmpty()) return {};
    const bool one = wrong.size() == 1;
    return Notice{(one ? u"This box does not contain a number: "_qs
                       : u"These boxes do not contain a number: "_qs) +
                      platform::listed(wrong, kMostNames) +
                      u". The program would end with an error when Process stores the settings."_qs,
                  {},
                  u"No file has been moved."_qs,
                  u"Type a number of milliseconds, 0 for none."_qs};
}

QList<Notice> noticesOf(const Choices& choices) {
    QList<Notice> notices;
    const auto add = [&](const std::optional<Notice>& notice) {
        if (notice) notices << *notice;
    };
    add(noticeOfRate(choices));
    if (!isStrict(choices.thresholdPercent))
        add(endsProgram(kThresholdPercent, choices.thresholdPercent,
                        u"when the files have been moved to Raw_Files"_qs));
    if (choices.setsEnds)
        add(noticeOfDecibels(kThresholdDecibels, choices.thresholdDecibels,
                             choices.thresholdPercent));
    if (choices.normalizes)
        add(noticeOfDecibels(kMaximumDecibels, choices.maximumDecibels, choices.maximumPercent));
    add(noticeOfMaximum(choices));
    return notices;
}

}  // namespace tarnwick::batch
