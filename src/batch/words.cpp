#include "batch/words.h"

#include <algorithm>

#include "runtime/file_names.h"

namespace tarnwick::batch {

namespace {

constexpr qsizetype kMostNames = 5;

}  // namespace

QString typedFor(QStringView name, const QString& text) {
    return name.toString() + u": '"_qs + text + u'\'';
}

QString listed(const QStringList& names) {
    QStringList shown;
    const bool all = names.size() <= kMostNames;
    for (const QString& name : names.first(all ? names.size() : kMostNames - 1))
        shown << runtime::readableFileName(name);
    if (!all) shown << u"%1 more"_qs.arg(names.size() - shown.size());
    if (shown.size() < 2) return shown.value(0);
    const QString last = shown.takeLast();
    return shown.join(u", "_qs) + u" and "_qs + last;
}

QString filesOf(qsizetype count) {
    return QString::number(count) + (count == 1 ? u" file"_qs : u" files"_qs);
}

QString filesOfAllWere(qsizetype count, qsizetype all) {
    return u"%1 of %2"_qs.arg(count).arg(filesOf(all)) + (count == 1 ? u" was"_qs : u" were"_qs);
}

QString because(const QString& reason) { return reason.isEmpty() ? QString() : u": "_qs + reason; }

}  // namespace tarnwick::batch
