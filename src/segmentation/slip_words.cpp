#include "segmentation/slip_words.h"

#include <QStringList>

#include "platform/notice_words.h"

namespace tarnwick::segmentation {

namespace {

// Continues "Likeliest: ".
QString phraseOf(const LikelySlip& slip) {
    switch (slip.kind) {
        case LikelySlip::Split:
            return u"a pause inside row %1 (stretches %2 and %3)"_qs.arg(slip.row)
                .arg(slip.stretch)
                .arg(slip.stretch + 1);
        case LikelySlip::Merged:
            return u"no pause between rows %1 and %2 (stretch %3)"_qs.arg(slip.row)
                .arg(slip.row + 1)
                .arg(slip.stretch);
        case LikelySlip::Extra:
            return u"stretch %1 is no prompt"_qs.arg(slip.stretch);
        case LikelySlip::Missing:
            break;
    }
    return u"row %1 was not read"_qs.arg(slip.row);
}

}  // namespace

QString sentenceOf(const LikelySlip& slip) {
    switch (slip.kind) {
        case LikelySlip::Split:
            return u"Row %1: stretches %2 and %3 together fit it: a pause inside the prompt."_qs
                .arg(slip.row)
                .arg(slip.stretch)
                .arg(slip.stretch + 1);
        case LikelySlip::Merged:
            return u"Stretch %1 fits rows %2 and %3 together: a pause is missing."_qs
                .arg(slip.stretch)
                .arg(slip.row)
                .arg(slip.row + 1);
        case LikelySlip::Extra:
            return u"Stretch %1 fits no row: a cough, a false start or a second reading."_qs.arg(
                slip.stretch);
        case LikelySlip::Missing:
            break;
    }
    return u"Row %1 was not read: it would stand before stretch %2."_qs.arg(slip.row).arg(
        slip.stretch);
}

QString listOf(const std::vector<LikelySlip>& slips) {
    QStringList lines;
    for (const LikelySlip& slip : slips)
        lines << sentenceOf(slip);
    return lines.join(u'\n');
}

QString slipTopic() { return u"slips"_qs; }

platform::Notice slipsAreLikely(const QString& stretches, const QString& prompts,
                                const std::vector<LikelySlip>& slips) {
    const auto others = static_cast<qsizetype>(slips.size()) - 1;
    QString what = u"%1 stretches, %2 prompts. Likeliest: %3"_qs.arg(stretches, prompts,
                                                                     phraseOf(slips.front()));
    if (others > 0)
        what += u", and "_qs + platform::counted(others, u"other place"_qs, u"other places"_qs);
    return {.what = what + u'.',
            .files = {},
            .safe = {},
            .remedy =
                u"Press N in the list to hear the row, and M on the waveform to select the "
                u"place to edit."_qs,
            .topic = slipTopic()};
}

}  // namespace tarnwick::segmentation
