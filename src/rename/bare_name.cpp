#include "rename/bare_name.h"

#include <QDir>

#include "runtime/fault.h"

namespace tarnwick::rename {

QString whyNoBareName(const QString& name) {
    if (name.isEmpty()) return u"it is empty"_qs;
    if (name.contains(QDir::separator())) return u"it contains a slash"_qs;
    if (name == u"." || name == u".." || name.contains(QChar::Null))
        return u"it is not a file name"_qs;
    return {};
}

void requireBareName(const QString& name) {
    const QString reason = whyNoBareName(name);
    if (!reason.isEmpty()) throw runtime::Fault(u"Bad file name or number"_qs, reason);
}

}  // namespace tarnwick::rename
