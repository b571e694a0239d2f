#include "project/script_rows.h"

#include "runtime/numbers.h"

namespace tarnwick::project {

RowRange specifiedRows(const QString& start, const QString& end) {
    return {runtime::roundToInteger(runtime::val(start)),
            runtime::roundToInteger(runtime::val(end))};
}

QString wordCount(const QString& content) { return QString::number(content.count(u' ') + 1); }

}  // namespace tarnwick::project
