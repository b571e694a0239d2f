#pragma once

#include <QByteArray>
#include <QString>

#include "documents/zip_package.h"

namespace tarnwick::documents {

struct Conversion;

// How the files of one kind are called in the faults that tell what is wrong with them.
struct FileKind {
    QString noun;     // "workbook"
    QString article;  // the noun in full with its article, "a workbook"
};

// Throws the fault for what is wrong with the file of that bare name.
[[noreturn]] void failWith(PackageError::Reason reason, const FileKind& kind, const QString& name);

// A whole file of that kind. Faults when there is none ("File not found"), when it is no regular
// file, may not be read ("Permission denied") or is too large.
QByteArray readForeignFile(const QString& path, const FileKind& kind);

// The new form of an old document. Faults when it is protected by a password, when the office
// suite makes no sense of it, and as convertDocument.
QByteArray newFormOf(const QByteArray& bytes, const Conversion& conversion, const FileKind& kind,
                     const QString& name);

}  // namespace tarnwick::documents
