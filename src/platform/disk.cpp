#include "platform/disk.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/durable_copy.h"
#include "runtime/fault.h"

namespace tarnwick::platform {

namespace {

namespace fs = std::filesystem;

fs::path native(const QString& path) { return fs::path(QFile::encodeName(path).toStdString()); }

// The classic words for a failure of the file system.
[[noreturn]] void throwFault(const std::error_code& error) {
    switch (error.value()) {
        case ENOENT:
            runtime::fileNotFound();
        case ENOTDIR:
            runtime::pathNotFound();
        case EEXIST:
            runtime::fileAlreadyExists();
        case EACCES:
        case EPERM:
        case EROFS:
            runtime::permissionDenied();
        case ENOSPC:
        case EDQUOT:
            runtime::diskFull();
        default:
            throw runtime::Fault(QString::fromStdString(error.message()));
    }
}

// Only * and ? are wild; a bracket is a bracket.
QRegularExpression matching(QStringView wildcard) {
    QString text = QRegularExpression::escape(wildcard);
    text.replace(u"\\*"_qs, u".*"_qs).replace(u"\\?"_qs, u"."_qs);
    return QRegularExpression(
        QRegularExpression::anchoredPattern(text),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
}

void requireFolderOf(const fs::path& path) {
    std::error_code ignored;
    if (!fs::is_directory(path.parent_path(), ignored)) runtime::pathNotFound();
}

}  // namespace

QString pathIn(const QString& folder, const QString& name) {
    return folder + QDir::separator() + name;
}

bool Disk::FolderExists(const QString& path) const {
    std::error_code ignored;
    return fs::is_directory(native(path), ignored);
}

bool Disk::FileExists(const QString& path) const {
    std::error_code ignored;
    return fs::exists(native(path), ignored) && !fs::is_directory(native(path), ignored);
}

QStringList Disk::list(const QString& folder, const QString& pattern) const {
    const bool bare = pattern.endsWith(u'.');
    const QRegularExpression wanted = matching(QStringView(pattern).chopped(bare ? 1 : 0));
    QStringList names;
    for (const QString& name : QDir(folder).entryList(QDir::Files, QDir::NoSort))
        if (wanted.match(name).hasMatch() && !(bare && name.contains(u'.'))) names << name;
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        const int order = a.compare(b, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : a < b;
    });
    return names;
}

void Disk::createFolder(const QString& path) {
    std::error_code error;
    if (!fs::create_directory(native(path), error))
        error ? throwFault(error) : throw runtime::Fault(u"Path/File access error"_qs);
}

void Disk::CopyFile(const QString& source, const QString& destination) {
    requireFolderOf(native(destination));
    if (const std::error_code error = copyDurably(native(source), native(destination)))
        throwFault(error);
}

void Disk::MoveFile(const QString& source, const QString& destination) {
    const fs::path from = native(source);
    fs::path to = native(destination);
    if (!to.has_filename()) to /= from.filename();  // ends with a separator
    if (!FileExists(source)) runtime::fileNotFound();
    requireFolderOf(to);
    if (const std::error_code error = moveWithoutOverwriting(from, to)) throwFault(error);
}

}  // namespace tarnwick::platform
