#include "rename/bare_name.h"

#include <QDir>

#include "runtime/fault.h"

namespace tarnwick::rename {

void requireBareName(const QString& name) {
    if (name.isEmpty() || name == u"." || name == u".." || name.contains(QDir::separator()) ||
        name.contains(QChar::Null))
        throw runtime::Fault(u"Bad file name or number"_qs);
}

}  // namespace tarnwick::rename
