#pragma once

#include <QStringList>

namespace tarnwick::test {

// The rows of a table written as text, with `columns` cells each. '|' separates cells; line breaks
// are ignored.
inline QList<QStringList> rowsOf(const char* table, qsizetype columns) {
    const QStringList cells = QString::fromUtf8(table).remove(u'\n').split(u'|');
    QList<QStringList> rows;
    for (qsizetype i = 0; i + columns <= cells.size(); i += columns)
        rows << cells.mid(i, columns);
    return rows;
}

}  // namespace tarnwick::test
