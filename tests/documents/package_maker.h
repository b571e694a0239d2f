#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <utility>
#include <vector>

using Parts = std::vector<std::pair<QByteArray, QByteArray>>;

// A file of the test data.
QByteArray bytesOf(const char* name);
QByteArray utf16(QStringView text);

// A zip archive of the given names and contents.
QByteArray zipOf(const Parts& parts);

// Rows of a sheet with texts in the columns A and B; an empty text makes no cell.
using Rows = QList<std::pair<QString, QString>>;
QByteArray cellsOf(const Rows& rows);

// The parts of a workbook with one worksheet of the given rows; the rest is what any writer makes.
Parts workbookParts(const QByteArray& rows);
void replacePart(Parts& parts, const QByteArray& name, const QByteArray& content);

// The parts of a Word document with that body.
Parts documentParts(const QByteArray& body);
