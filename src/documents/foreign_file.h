#pragma once

#include <QByteArray>
#include <QString>

#include "documents/zip_package.h"

namespace tarnwick::documents {

struct Conversion;

// What faults call a file of one kind.
struct FileKind {
    QString noun;     // "workbook"
    QString article;  // the noun in full with its article, "a workbook"
};

// Throws the fault for `reason`. `name`: the bare file name.
[[noreturn]] void failWith(PackageError::Reason reason, const FileKind& kind, const QString& name);

// Reads a whole file. Faults if there is none ("File not found"), if it is not a regular file, may
// not be read ("Permission denied") or is too large.
QByteArray readForeignFile(const QString& path, const FileKind& kind);

// The new form of an old document. Faults if it is protected by a password or the office suite
// cannot read it, and wherever convertDocument faults.
QByteArray newFormOf(const QByteArray& bytes, const Conversion& conversion, const FileKind& kind,
                     const QString& name);

}  // namespace tarnwick::documents
