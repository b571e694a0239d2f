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
    std::unique_ptr<QObject> watchDrives(std::function<void()> changed) const override;
    QString homeFolder() const override;
    qint64 freeBytes(const QString& folder) const override;
    void createFolder(const QString& path) override;
    void CopyFile(const QString& source, const QString& destination) override;
    void copyToNewFile(const QString& source, const QString& destination) override;
    void MoveFile(const QString& source, const QString& destination) override;
    QDateTime DateLastModified(const QString& path) const override;
    using FileSystem::setDateLastModified;
    bool setDateLastModified(const QString& path, const QDateTime& time, int& error) override;
    int dateError(const QString& path) const override;
    qint64 fileBytes(const QString& path) const override;
};

// False for mount points that belong to the system and are no place for the operator's files.
bool isPlaceForFiles(const QString& mountPoint);

}  // namespace tarnwick::platform
