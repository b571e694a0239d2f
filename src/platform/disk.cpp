#include "platform/disk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <QDir>
#include <QStorageInfo>
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/descriptor.h"
#include "platform/disk_fault.h"
#include "platform/durable_copy.h"
#include "platform/mount_watch.h"
#include "platform/wildcards.h"
#include "runtime/fault.h"
#include "runtime/file_names.h"

namespace tarnwick::platform {

namespace {

namespace fs = std::filesystem;

using runtime::pathOf;

// The sorted bare names of the entries of `folder` for which `wanted` is true.
template <class Wanted>
QStringList namesIn(const QString& folder, Wanted wanted) {
    QStringList names;
    std::error_code error;
    for (fs::directory_iterator entry(pathOf(folder), error);
         !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const QString name = runtime::textOfFileName(entry->path().filename().native());
        if (wanted(*entry, name)) names << name;
    }
    std::sort(names.begin(), names.end(), runtime::nameLess);
    return names;
}

void requireFolderOf(const fs::path& path) {
    std::error_code ignored;
    const fs::path folder = path.parent_path();
    if (!fs::is_directory(folder, ignored))
        runtime::withDetail(runtime::readableFileName(runtime::textOfFileName(folder.native())),
                            runtime::pathNotFound);
}

// Guesses which of two files an error belongs to. A missing file can only be the source. A full
// disk or a taken name can only be the target, which is also more likely to be protected.
const QString& faultyOf(const std::error_code& error, const QString& source,
                        const QString& destination) {
    return error == std::errc::no_such_file_or_directory ? source : destination;
}

void copy(const QString& source, const QString& destination, IfTaken ifTaken) {
    requireFolderOf(pathOf(destination));
    if (const std::error_code error = copyDurably(pathOf(source), pathOf(destination), ifTaken))
        throwDiskFault(error, faultyOf(error, source, destination));
}

// Opens a file for writing before its date is set, because an owner may set the date without write
// permission. Opening a pipe or a device has side effects, so only regular files are opened;
// O_NONBLOCK avoids waiting if a pipe has just taken the name. Returns an errno value; 0: opened.
int openToDate(const QString& path, Descriptor& opened) {
    struct stat state {};
    if (::stat(pathOf(path).c_str(), &state) != 0) return errno;
    if (S_ISDIR(state.st_mode)) return EISDIR;
    if (!S_ISREG(state.st_mode)) return EINVAL;
    return opened.open(pathOf(path), O_WRONLY | O_NONBLOCK | O_NOCTTY, 0) ? 0 : errno;
}

}  // namespace

QString pathIn(const QString& folder, const QString& name) {
    return folder.endsWith(QDir::separator()) ? folder + name : folder + QDir::separator() + name;
}

QStringList pathsIn(const QString& folder, const QStringList& names) {
    QStringList paths;
    for (const QString& name : names)
        paths << pathIn(folder, name);
    return paths;
}

QString folderOf(const QString& path) {
    const QString folder = path.left(std::max<qsizetype>(path.lastIndexOf(QDir::separator()), 0));
    return folder.isEmpty() ? QDir::rootPath() : folder;
}

bool isPlaceForFiles(const QString& mountPoint) {
    if (mountPoint.startsWith(u"/run/media/")) return true;
    constexpr QStringView kInnards[] = {u"/dev", u"/proc", u"/sys", u"/run", u"/boot", u"/snap"};
    return std::none_of(std::begin(kInnards), std::end(kInnards), [&](QStringView place) {
        return mountPoint == place || mountPoint.startsWith(place.toString() + u'/');
    });
}

bool Disk::FolderExists(const QString& path) const {
    std::error_code ignored;
    return fs::is_directory(pathOf(path), ignored);
}

bool Disk::FileExists(const QString& path) const {
    std::error_code ignored;
    return fs::exists(pathOf(path), ignored) && !fs::is_directory(pathOf(path), ignored);
}

bool Disk::isTaken(const QString& path) const {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(pathOf(path), ignored));
}

QStringList Disk::list(const QString& folder, const QStringList& patterns) const {
    const Wildcards wildcards(patterns);
    return namesIn(folder, [&](const fs::directory_entry& entry, const QString& name) {
        std::error_code ignored;
        return wildcards.match(name) && entry.is_regular_file(ignored);
    });
}

QStringList Disk::listFolders(const QString& folder) const {
    return namesIn(folder, [](const fs::directory_entry& entry, const QString& name) {
        std::error_code ignored;
        return !name.startsWith(u'.') && entry.is_directory(ignored);
    });
}

QStringList Disk::drives() const {
    QStringList paths;
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
        if (isPlaceForFiles(volume.rootPath()) && FolderExists(volume.rootPath()))
            paths << volume.rootPath();
    paths << QDir::rootPath();
    std::sort(paths.begin(), paths.end(), runtime::nameLess);
    paths.removeDuplicates();
    return paths;
}

std::unique_ptr<QObject> Disk::watchDrives(std::function<void()> changed) const {
    return std::make_unique<MountWatch>(std::move(changed));
}

QString Disk::homeFolder() const {
    const char* const home = std::getenv("HOME");
    const QString path =
        QDir::cleanPath(runtime::textOfFileName(home != nullptr ? home : std::string_view()));
    return path.startsWith(QDir::separator()) && FolderExists(path) ? path : QDir::rootPath();
}

qint64 Disk::freeBytes(const QString& folder) const {
    struct statvfs state {};
    if (::statvfs(pathOf(folder).c_str(), &state) != 0) return -1;
    return static_cast<qint64>(state.f_bavail) * static_cast<qint64>(state.f_frsize);
}

void Disk::createFolder(const QString& path) {
    std::error_code error;
    if (!fs::create_directory(pathOf(path), error))
        error ? throwDiskFault(error, path) : throw runtime::Fault(u"Path/File access error"_qs);
}

void Disk::CopyFile(const QString& source, const QString& destination) {
    copy(source, destination, IfTaken::Replace);
}

void Disk::copyToNewFile(const QString& source, const QString& destination) {
    copy(source, destination, IfTaken::Fail);
}

void Disk::MoveFile(const QString& source, const QString& destination) {
    const fs::path from = pathOf(source);
    fs::path to = pathOf(destination);
    if (!to.has_filename()) to /= from.filename();  // ends with a separator
    // A symbolic link is moved itself, even if its target does not exist.
    std::error_code ignored;
    if (!FileExists(source) && !is_symlink(from, ignored))
        throwDiskFault(std::make_error_code(std::errc::no_such_file_or_directory), source);
    requireFolderOf(to);
    if (const std::error_code error = moveWithoutOverwriting(from, to))
        throwDiskFault(error, faultyOf(error, source, runtime::textOfFileName(to.native())));
}

QDateTime Disk::DateLastModified(const QString& path) const {
    struct stat state {};
    if (::stat(pathOf(path).c_str(), &state) != 0 || S_ISDIR(state.st_mode))
        runtime::fileNotFound();
    return QDateTime::fromSecsSinceEpoch(state.st_mtim.tv_sec);
}

qint64 Disk::fileBytes(const QString& path) const {
    std::error_code error;
    const std::uintmax_t bytes = fs::file_size(pathOf(path), error);
    return error ? 0 : static_cast<qint64>(bytes);
}

bool Disk::setDateLastModified(const QString& path, const QDateTime& time, int& error) {
    const timespec times[] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT},
                              {.tv_sec = time.toSecsSinceEpoch(), .tv_nsec = 0}};
    Descriptor opened;
    error = openToDate(path, opened);
    if (error == 0 && ::futimens(opened.number(), times) != 0) error = errno;
    return error == 0;
}

// Write permission alone is not enough: only the owner may set a date of his choice.
int Disk::dateError(const QString& path) const {
    Descriptor opened;
    if (const int error = openToDate(path, opened)) return error;
    struct stat state {};
    if (::fstat(opened.number(), &state) != 0) return errno;
    const uid_t self = ::geteuid();
    return self == 0 || self == state.st_uid ? 0 : EPERM;
}

}  // namespace tarnwick::platform
