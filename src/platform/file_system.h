#pragma once

#include <QString>
#include <QStringList>

namespace tarnwick::platform {

// Files and folders. Failures are Faults with the classic words ("File not found", "Path not
// found", "Permission denied", "File already exists", "Disk full", "Path/File access error").
class FileSystem {
  public:
    virtual ~FileSystem() = default;

    virtual bool FolderExists(const QString& path) const = 0;
    virtual bool FileExists(const QString& path) const = 0;

    // Bare names of the files in `folder` that match the wildcard `pattern` ("*.wav"), in either
    // case, sorted without regard to case. A pattern that ends with a dot ("*.") wants names that
    // have no extension. A folder that cannot be read lists nothing.
    virtual QStringList list(const QString& folder, const QString& pattern) const = 0;

    virtual void createFolder(const QString& path) = 0;

    // Copies over whatever is there. On return the copy is safely on disk; a failed copy leaves
    // what was there before.
    virtual void CopyFile(const QString& source, const QString& destination) = 0;

    // Moves a file. A destination that ends with a separator is a folder to move into. Never
    // overwrites.
    virtual void MoveFile(const QString& source, const QString& destination) = 0;
};

// `name` in `folder`, joined by the platform's separator.
QString pathIn(const QString& folder, const QString& name);

}  // namespace tarnwick::platform
