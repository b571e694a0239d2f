#include "platform/notice_words.h"

#include <QLocale>
#include <algorithm>
#include <utility>

#include "runtime/file_names.h"

namespace tarnwick::platform {

QString counted(qsizetype count, const QString& one, const QString& many) {
    return QString::number(count) + u' ' + (count == 1 ? one : many);
}

QString listed(const QStringList& items, qsizetype most, qsizetype all) {
    QStringList shown = items;
    if (items.size() > most + 1)
        shown =
            items.first(most) << QString::number(std::max(items.size(), all) - most) + u" more"_qs;
    if (shown.size() < 2) return shown.value(0);
    const QString last = shown.takeLast();
    return shown.join(u", "_qs) + u" and "_qs + last;
}

QString listedByReason(const QList<NameAndReason>& items, qsizetype most, const QString& pattern) {
    struct Group {
        QString reason;
        QStringList names;
        qsizetype all = 0;
    };
    QList<Group> groups;
    for (const auto& [name, reason] : items) {
        auto group = std::ranges::find(groups, reason, &Group::reason);
        if (group == groups.end()) group = groups.insert(groups.end(), {reason, {}});
        if (!group->names.contains(name)) group->names << name;
        ++group->all;
    }
    QStringList parts;
    for (const auto& [reason, names, all] : std::as_const(groups)) {
        const QString list = listed(names, most, all);
        parts << (reason.isEmpty() ? list : pattern.arg(list, reason));
    }
    return parts.join(u"; "_qs);
}

QString shownName(const QString& name) {
    constexpr qsizetype kMost = 60;
    constexpr qsizetype kEnd = 20;  // characters behind the gap
    const QString readable = runtime::readableFileName(name);
    if (readable.size() <= kMost) return readable;
    QString begin = readable.left(kMost - kEnd - 1);
    QString end = readable.right(kEnd);
    // A character of two code units is not cut in half.
    if (begin.back().isHighSurrogate()) begin.chop(1);
    if (end.front().isLowSurrogate()) end.remove(0, 1);
    return begin + u'…' + end;
}

QString bareName(const QString& path) {
    return shownName(path.section(u'/', -1, -1, QString::SectionSkipEmpty));
}

QString sizeText(qint64 bytes) {
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

QString sentencesOf(const Notice& notice) {
    QStringList sentences{notice.what, notice.safe, notice.remedy};
    sentences.removeAll(QString());
    return sentences.join(u' ');
}

}  // namespace tarnwick::platform
