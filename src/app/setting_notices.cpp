#include "app/setting_notices.h"

#include <cmath>
#include <utility>

#include "model/limits.h"
#include "project/script_rows.h"
#include "runtime/fault.h"
#include "runtime/levels.h"
#include "runtime/numbers.h"
#include "segmentation/alignment_row.h"

namespace tarnwick::app {

namespace {

constexpr qint32 kShortestPause = 20;    // ms; shorter pauses occur inside words
constexpr qint32 kLongSilence = 600000;  // ms; the pauses around the rows tested

// The classic description of the fault that `work` throws; empty if it throws none.
template <class Work>
QString faultOf(Work work) {
    try {
        work();
        return {};
    } catch (const runtime::Fault& fault) {
        return fault.description();
    }
}

QString ending(const QString& fault) {
    return u"every load will end with the error “%1”."_qs.arg(fault);
}

QString named(const QString& field, const QString& value) {
    return value.trimmed().isEmpty() ? field + u" is empty"_qs : u"%1 is “%2”"_qs.arg(field, value);
}

// What is wrong with the value of a box of the main window; empty if nothing is.
struct Objection {
    QString what;
    bool endsAllLoads = true;  // so that the list is never filled and the box stays grey
};

// Makes the same conversions as a scan: decibels, percent with one decimal, amplitude.
Objection thresholdObjection(const QString& text) {
    const QString value = named(u"Threshold"_qs, text);
    const QString noNumber = faultOf([&] { runtime::strictDouble(text); });
    if (!noNumber.isEmpty()) return {value + u", which is not a number: "_qs + ending(noNumber)};
    QString amplitude;
    const QString tooLoud = faultOf([&] {
        const double percent = runtime::percentOfDecibels(runtime::strictDouble(text));
        amplitude = runtime::amplitudeOfPercent(runtime::fixedOneDecimal(percent));
        runtime::strictInteger(amplitude);
    });
    if (!tooLoud.isEmpty())
        return {value + u". No sound is louder than 0 dB, so "_qs + ending(tooLoud)};
    if (runtime::strictDouble(amplitude) < INT16_MAX) return {};
    return {
        value + u". No sound is louder than that, so the whole recording counts as one pause."_qs,
        false};
}

Objection durationObjection(const QString& text) {
    const QString value = named(u"Duration"_qs, text);
    const QString noNumber = faultOf([&] { runtime::strictLong(text); });
    if (!noNumber.isEmpty())
        return {value + u", which is not a length in milliseconds: "_qs + ending(noNumber)};
    const qint32 length = runtime::strictLong(text);
    if (length < 0)
        return {value +
                u". Such a pause cannot be added to the ends of the recording, so every "
                u"load will end without a list."_qs};
    if (length >= kShortestPause) return {};
    return {
        value +
            u" ms. Pauses this short are also found inside words, and a load with more than %1 "
            u"of them ends with the error “Subscript out of range”."_qs.arg(model::kSilenceSlots),
        false};
}

// Tries the speed with the extremes: a prompt of 1 word and one of 100 words.
Objection speedObjection(const QString& text) {
    const auto fault = [&](const char16_t* words) {
        return faultOf([&] {
            segmentation::alignRow(
                {.FileName = {}, .Content = {}, .Words = QString::fromUtf16(words)}, {},
                {.StartAt = kLongSilence, .FinishAt = kLongSilence}, text, {});
        });
    };
    const QString shortOne = fault(u"1");
    const QString end = shortOne.isEmpty() ? fault(u"100") : shortOne;
    if (end.isEmpty()) return {};
    return {named(u"Words/min"_qs, text) + u", which is not a possible reading speed: "_qs +
            ending(end)};
}

QString channelsObjection(const QString& text) {
    const QString value = named(u"Channels"_qs, text);
    const QString noNumber = faultOf([&] { runtime::strictLong(text); });
    if (!noNumber.isEmpty())
        return value +
               u", which is not a number: saving the recording and exporting end with the error "
               u"“%1”."_qs.arg(noNumber);
    const qint32 channels = runtime::strictLong(text);
    if (channels == 1 || channels == 2) return {};
    return value +
           u". Only 1 and 2 are possible: the recording cannot be saved, and an export "
           u"stops at its first row."_qs;
}

QString rowsObjection(const LoadSettings& settings) {
    if (!settings.onlyRows) return {};
    const QString range =
        u"Only Import Rows goes from “%1” to “%2”"_qs.arg(settings.firstRow, settings.lastRow);
    project::RowRange rows;
    const QString tooLarge =
        faultOf([&] { rows = project::specifiedRows(settings.firstRow, settings.lastRow); });
    if (!tooLarge.isEmpty()) return range + u": "_qs + ending(tooLarge);
    if (rows.viLastRow < rows.viFirstRow)
        return range + u". This range is empty, so "_qs + ending(u"Index out of bounds"_qs);
    if (rows.viFirstRow < 1)
        return range + u". The first row of a sheet is 1, so "_qs +
               ending(u"Application-defined or object-defined error"_qs);
    if (rows.viLastRow - rows.viFirstRow < model::kPromptSlots - 1) return {};
    return range + u". A script may have %1 prompts, so "_qs.arg(model::kPromptSlots - 1) +
           ending(u"Subscript out of range"_qs);
}

using Check = Objection (*)(const QString& text);

// The settings store only the number at the beginning of a text, which counts from the next start
// on. Until then the text counts.
QString wayInLiveBox(Check check, const QString& text) {
    const QString again = u"Correct it now, and press Save in the Preferences again"_qs;
    const double stored = runtime::val(text);
    if (!std::isfinite(stored)) return again + u'.';
    const QString next = runtime::plainText(stored);
    if (const Objection then = check(next); !then.what.isEmpty() && then.endsAllLoads)
        return again + u": after the next start its box is grey."_qs;
    return next == text
               ? again + u'.'
               : again + u": %1 was stored, which counts from the next start on."_qs.arg(next);
}

QString wayInGreyBox(const Objection& objection) {
    return u"Its box is grey until a list has been filled. "_qs +
           (objection.endsAllLoads ? u"Quit and replace Tarnwick.mdb with the one that came with "
                                     u"Tarnwick; all settings "
                                     u"then return to their first values."_qs
                                   : u"Load a session, best with a short recording; then correct "
                                     u"the value, press Save in "
                                     u"the Preferences and load again."_qs);
}

}  // namespace

QList<platform::Notice> noticesOf(const LoadSettings& settings) {
    const QString page = u"Correct it in the Preferences, and press Save there."_qs;
    QList<platform::Notice> notices;
    const std::pair<Check, const QString&> boxes[] = {{thresholdObjection, settings.threshold},
                                                      {durationObjection, settings.duration},
                                                      {speedObjection, settings.wordsPerMinute}};
    for (const auto& [check, text] : boxes)
        if (const Objection objection = check(text); !objection.what.isEmpty())
            notices << platform::Notice{.what = objection.what,
                                        .files = settings.boxesAreLive || !objection.endsAllLoads
                                                     ? QStringList()
                                                     : QStringList(settings.database),
                                        .safe = {},
                                        .remedy = settings.boxesAreLive ? wayInLiveBox(check, text)
                                                                        : wayInGreyBox(objection)};
    for (const QString& objection : {channelsObjection(settings.channels), rowsObjection(settings)})
        if (!objection.isEmpty())
            notices << platform::Notice{.what = objection, .files = {}, .safe = {}, .remedy = page};
    return notices;
}

}  // namespace tarnwick::app
