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
// of the filter changes the file list. UI thread.
class FolderLists : public QObject {
  public:
    FolderLists(forms::frmRenameWiz& form, WorkingTable& table, const Services& services);

    // Shows the drives, chooses the root, and lists its files.
    void open();

    // Chooses a folder: full path, without a trailing separator except for the root.
    void setFolder(const QString& path);

  private:
    void Drivelb_Change();
    void Directorylb_Change();
    void enter(int row);
    void showFolders();
    void addFolder(const QIcon& icon, const QString& name, const QString& path, int level);

    forms::frmRenameWiz& form_;
    WorkingTable& table_;
    const Services& services_;
    QString folder_;  // full path
};

}  // namespace tarnwick::rename
