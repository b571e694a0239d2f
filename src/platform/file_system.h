#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

namespace tarnwick::platform {

// Files and folders. A name that is not valid text is returned in a form that still leads to its
// file (runtime/file_names.h). Failures are Faults with the classic words ("File not found", "Path
// not found", "Permission denied", "File already exists", "Disk full", "Path/File access error").
class FileSystem {
  public:
    virtual ~FileSystem() = default;

    virtual bool FolderExists(const QString& path) const = 0;
    virtual bool FileExists(const QString& path) const = 0;
    // Whether anything has that name: a file, a folder or a link, even a dangling one.
    virtual bool isTaken(const QString& path) const = 0;

    // Bare names of the files in `folder` that match one of the wildcard `patterns` ("*.wav"),
    // matched and sorted without regard to case. As usual, "take.*" also matches a name without an
    // extension, and "*." matches only such names. Hidden files (".name") match only patterns that
    // begin with a dot. Empty for a folder that cannot be read.
    virtual QStringList list(const QString& folder, const QStringList& patterns) const = 0;
    QStringList list(const QString& folder, const QString& pattern) const {
        return list(folder, QStringList{pattern});
    }

    // Bare names of the folders in `folder`, without the hidden ones, sorted in the same way.
    virtual QStringList listFolders(const QString& folder) const = 0;

    // Full paths of the root and of the volumes mounted below it, the root first.
    virtual QStringList drives() const = 0;
    // Free bytes in `folder` that the operator may use; -1 if unknown.
    virtual qint64 freeBytes(const QString& folder) const = 0;
    // Calls `changed` from the event loop of this thread whenever drives() may have changed, until
    // the returned object is deleted. `changed` must not throw.
    virtual std::unique_ptr<QObject> watchDrives(std::function<void()> changed) const = 0;

    // Full path of the operator's home folder; the root if there is none.
    virtual QString homeFolder() const = 0;

    virtual void createFolder(const QString& path) = 0;

    // Copies and replaces an existing destination; the copy has the date of the original. On return
    // the copy is safely on disk; if it fails, the destination is unchanged.
    virtual void CopyFile(const QString& source, const QString& destination) = 0;
    // The same, but fails if the name is taken, even if that happened during the copy.
    virtual void copyToNewFile(const QString& source, const QString& destination) = 0;

    // Moves a file. A destination that ends with a separator is a folder to move into. Never
    // overwrites.
    virtual void MoveFile(const QString& source, const QString& destination) = 0;

    // When the file was last written, in local time, to the second (rounded down). "File not found"
    // if there is no such file.
    virtual QDateTime DateLastModified(const QString& path) const = 0;

    // The size of a file; 0 if there is no such file.
    virtual qint64 fileBytes(const QString& path) const = 0;

    // Sets only that time. False if it cannot be set or if the file may not be written; `error`
    // then gets the errno value that says why.
    virtual bool setDateLastModified(const QString& path, const QDateTime& time, int& error) = 0;
    bool setDateLastModified(const QString& path, const QDateTime& time) {
        int ignored = 0;
        return setDateLastModified(path, time, ignored);
    }
    // Why setDateLastModified would fail, as an errno value; 0 if no obstacle is known.
    // Changes nothing.
    virtual int dateError(const QString& path) const = 0;
};

// `name` in `folder`, joined by the platform's separator.
QString pathIn(const QString& folder, const QString& name);
QStringList pathsIn(const QString& folder, const QStringList& names);

// The folder of a file that is told by its full path, without a separator at its end. Only the root
// keeps its own: the empty text is no folder.
QString folderOf(const QString& path);

}  // namespace tarnwick::platform
