#pragma once

#include "platform/file_system.h"

namespace tarnwick::platform {

// The files and folders of this machine.
class Disk : public FileSystem {
  public:
    bool FolderExists(const QString& path) const override;
    bool FileExists(const QString& path) const override;
    bool isTaken(const QString& path) const override;
    using FileSystem::list;
    QStringList list(const QString& folder, const QStringList& patterns) const override;
    QStringList listFolders(const QString& folder) const override;
    QStringList drives() const override;
    qint64 freeBytes(const QString& folder) const override;
    void createFolder(const QString& path) override;
    void CopyFile(const QString& source, const QString& destination) override;
    void copyToNewFile(const QString& source, const QString& destination) override;
    void MoveFile(const QString& source, const QString& destination) override;
    QDateTime DateLastModified(const QString& path) const override;
    bool setDateLastModified(const QString& path, const QDateTime& time) override;
};

// False for mount points that belong to the system and are no place for the operator's files.
bool isPlaceForFiles(const QString& mountPoint);

}  // namespace tarnwick::platform
