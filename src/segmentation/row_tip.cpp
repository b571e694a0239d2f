#include "segmentation/row_tip.h"

namespace tarnwick::segmentation {

namespace {

constexpr qsizetype kMostShown = 400;  // characters of a prompt

QString seconds(qint32 ms) { return QString::number(ms / 1000.0, 'f', 1) + u" s"_qs; }

QString shortened(const QString& content) {
    const QString line = content.simplified();
    return line.size() > kMostShown ? line.first(kMostShown) + u'…' : line;
}

// Says where a row plays from that has no stretch.
QString withoutStretch(qint32 start) {
    return u"There is no stretch of speech for this row: it plays from %1."_qs.arg(
        start > 0 ? u"the end of the last pause"_qs : u"the recording's begin"_qs);
}

}  // namespace

QString timesText(const QString& begin, const QString& end, qint32 length) {
    return u"%1 to %2, %3"_qs.arg(begin, end, seconds(length));
}

QStringList rowTip(const RowFacts& facts) {
    const AlignmentRow& timing = facts.timing;
    QStringList lines{u"Row %1: %2"_qs.arg(facts.row).arg(facts.prompt.FileName),
                      shortened(facts.prompt.Content)};
    if (!facts.hasStretch) return lines << withoutStretch(timing.Start);
    lines << timesText(facts.begin, facts.end, timing.Actual);
    if (timing.flagged)
        lines << u"Red: %1; %2 %3 at %4 a minute would take %5."_qs.arg(
            seconds(timing.Actual), facts.prompt.Words,
            facts.prompt.Words == u"1" ? u"word"_qs : u"words"_qs,
            QString::number(facts.wordsPerMinute), seconds(timing.Projected));
    return lines;
}

QString wrappedTip(const QStringList& lines) {
    QStringList safe;
    for (const QString& line : lines)
        safe << line.toHtmlEscaped();
    return u"<p>"_qs + safe.join(u"<br>"_qs) + u"</p>"_qs;
}

}  // namespace tarnwick::segmentation
