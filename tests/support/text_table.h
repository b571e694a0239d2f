#pragma once

#include <QStringList>

namespace tarnwick::test {

// The rows of a table that is written as text, of so many cells each. '|' is between two cells, and
// line breaks only wrap the table.
inline QList<QStringList> rowsOf(const char* table, qsizetype columns) {
    const QStringList cells = QString::fromUtf8(table).remove(u'\n').split(u'|');
    QList<QStringList> rows;
    for (qsizetype i = 0; i + columns <= cells.size(); i += columns)
        rows << cells.mid(i, columns);
    return rows;
}

}  // namespace tarnwick::test
