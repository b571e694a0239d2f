#pragma once

#include <QString>

// Decisions of the script import that need no workbook or window.

namespace tarnwick::project {

// The rows of the sheet to read, both included, from 1.
struct RowRange {
    qint16 viFirstRow = 1;
    qint16 viLastRow = 0;
};

// The range entered by the operator: the leading numbers of the two texts. Faults with "Overflow".
RowRange specifiedRows(const QString& start, const QString& end);

// The word count of a prompt as text: its blanks plus one.
QString wordCount(const QString& content);

}  // namespace tarnwick::project
