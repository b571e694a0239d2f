#pragma once

#include <QList>
#include <QStringList>

#include "platform/notices.h"
#include "project/script_rows.h"

namespace tarnwick::documents {
class Sheet;
}

// Notices about an imported script, told before its prompts are exported.

namespace tarnwick::project {

// One notice for each kind of file name with which the export cannot write the file as the script
// names it.
// `names`: those of the prompts, in the order of the list. `recording`: its bare name.
QList<platform::Notice> nameNotices(const QStringList& names, const QString& recording);

// One notice for each thing that is missing because the workbook has a formula without a stored
// result. `rows`: the rows that were read; `toTheEnd`: up to the first empty cell of column 1.
QList<platform::Notice> formulaNotices(const documents::Sheet& sheet, const RowRange& rows,
                                       bool toTheEnd);

}  // namespace tarnwick::project
