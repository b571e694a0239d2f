#include "project/script_rows.h"

#include "runtime/fault.h"
#include "runtime/numbers.h"

namespace tarnwick::project {

RowRange specifiedRows(const QString& start, const QString& end) {
    const auto row = [](const QString& text) {
        return runtime::withDetail(u"Only Import Rows is \"%1\""_qs.arg(text),
                                   [&] { return runtime::roundToInteger(runtime::val(text)); });
    };
    return {row(start), row(end)};
}

QString wordCount(const QString& content) { return QString::number(content.count(u' ') + 1); }

}  // namespace tarnwick::project
