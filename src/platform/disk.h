#pragma once

#include "platform/file_system.h"

namespace tarnwick::platform {

// The machine's own files and folders.
class Disk : public FileSystem {
  public:
    bool FolderExists(const QString& path) const override;
    bool FileExists(const QString& path) const override;
    QStringList list(const QString& folder, const QString& pattern) const override;
    void createFolder(const QString& path) override;
    void CopyFile(const QString& source, const QString& destination) override;
    void MoveFile(const QString& source, const QString& destination) override;
};

}  // namespace tarnwick::platform
