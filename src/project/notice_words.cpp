#include "project/notice_words.h"

#include <QDir>

#include "runtime/file_names.h"

namespace tarnwick::project {

namespace {

constexpr qsizetype kFew = 3;
constexpr qsizetype kLongestName = 60;  // characters
constexpr qsizetype kEndOfName = 15;

}  // namespace

QString counted(qsizetype count, const QString& one, const QString& many) {
    return count == 1 ? one : QString::number(count) + u' ' + many;
}

QString firstFew(const QStringList& items) {
    const qsizetype more = items.size() - kFew;
    if (more > 0)
        return u"%1 and %2 more"_qs.arg(items.mid(0, kFew).join(u", "_qs), QString::number(more));
    if (items.size() < 2) return items.join(QString());
    return items.mid(0, items.size() - 1).join(u", "_qs) + u" and "_qs + items.last();
}

QString shownName(const QString& path) {
    const QString name = runtime::readableFileName(path.section(QDir::separator(), -1));
    if (name.size() <= kLongestName) return name;
    return name.left(kLongestName - kEndOfName) + u'…' + name.right(kEndOfName);
}

}  // namespace tarnwick::project
