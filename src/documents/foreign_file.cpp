#include "documents/foreign_file.h"

#include <QFile>
#include <cstdio>
#include <filesystem>

#include "documents/office_converter.h"
#include "runtime/fault.h"
#include "runtime/file_names.h"

namespace tarnwick::documents {

namespace {

constexpr qint64 kLargestFile = 128 << 20;  // bytes

}  // namespace

void failWith(PackageError::Reason reason, const FileKind& kind, const QString& name) {
    const QString file = u'"' + name + u'"';
    if (reason == PackageError::kNotAPackage)
        throw runtime::Fault(QStringLiteral("The file %1 is not %2.").arg(file, kind.article));
    QString what = QStringLiteral("The %1 %2 is damaged.");
    if (reason == PackageError::kEncrypted)
        what = QStringLiteral("The %1 %2 is protected by a password.");
    else if (reason == PackageError::kTooLarge)
        what = QStringLiteral("The %1 %2 is too large to be read.");
    throw runtime::Fault(what.arg(kind.noun, file));
}

QByteArray readForeignFile(const QString& path, const FileKind& kind) {
    const std::filesystem::path place = runtime::pathOf(path);
    const QString name = runtime::textOfFileName(place.filename().native());
    std::error_code ignored;
    if (!exists(place, ignored)) runtime::fileNotFound();
    if (!is_regular_file(place, ignored)) failWith(PackageError::kNotAPackage, kind, name);
    QFile file;
    std::FILE* const open = std::fopen(place.c_str(), "rb");
    if (open == nullptr || !file.open(open, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        runtime::permissionDenied();
    if (file.size() > kLargestFile) failWith(PackageError::kTooLarge, kind, name);
    return file.read(kLargestFile);
}

QByteArray newFormOf(const QByteArray& bytes, const Conversion& conversion, const FileKind& kind,
                     const QString& name) {
    if (isPasswordProtected(bytes)) failWith(PackageError::kEncrypted, kind, name);
    QByteArray converted = convertDocument(bytes, conversion);
    if (converted.isEmpty()) failWith(PackageError::kDamaged, kind, name);
    return converted;
}

}  // namespace tarnwick::documents
