#pragma once

#include <QIcon>
#include <QObject>

#include "rename/services.h"
#include "rename/working_table.h"

namespace tarnwick::forms {
class frmRenameWiz;
}

namespace tarnwick::rename {

// Drive, folder and file list. A change of the drive changes the folder; a change of the folder or
// of the filter changes the file list. The first drive is Home, the operator's home folder. The
// list of drives is updated when volumes are mounted or unmounted. UI thread.
class FolderLists : public QObject {
  public:
    FolderLists(forms::frmRenameWiz& form, WorkingTable& table, const Services& services);

    // Shows the drives, chooses Home, and lists its files.
    void open();

    // Chooses a folder: full path, without a trailing separator except for the root. If it is not
    // on the chosen drive, the root becomes the drive.
    void setFolder(const QString& path);

  private:
    QString drive() const;
    void chooseDrive(int row);
    void followDrives();
    void showDrives();
    void leaveVolume(const QString& volume);
    void Drivelb_Change();
    void Directorylb_Change();
    void enter(int row);
    void showFolders();
    void addFolder(const QIcon& icon, const QString& name, const QString& path, int level);

    forms::frmRenameWiz& form_;
    WorkingTable& table_;
    const Services& services_;
    QString folder_;      // full path
    QStringList drives_;  // without Home
    std::unique_ptr<QObject> watch_;
};

}  // namespace tarnwick::rename
