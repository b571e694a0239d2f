#pragma once

#include <QIcon>
#include <QObject>

#include "rename/services.h"
#include "rename/working_table.h"

namespace tarnwick::forms {
class frmRenameWiz;
}

namespace tarnwick::rename {

// Drive, folder and file list. The drive leads the folder, and the folder, with the filter, leads
// the file list; whoever changes one of them changes what follows. UI thread.
class FolderLists : public QObject {
  public:
    FolderLists(forms::frmRenameWiz& form, WorkingTable& table, const Services& services);

    // Shows the drives, chooses the root, and lists its files.
    void open();

    // Chooses a folder: full path, no separator at its end but the root's own.
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
