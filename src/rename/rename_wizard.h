#pragma once

#include "rename/file_selection.h"
#include "rename/folder_lists.h"
#include "rename/re_dating.h"
#include "rename/rename_per_list.h"
#include "rename/rename_rules.h"
#include "rename/rule_fields.h"
#include "rename/services.h"
#include "rename/working_table.h"

namespace tarnwick::rename {

// The behaviour of one Rename Wizard window: its classes and their shared state. UI thread.
class RenameWizard : public QObject {
  public:
    // A child of the form, created and deleted with it.
    RenameWizard(forms::frmRenameWiz& form, Services services);

    // Prepares the window before it is shown: empty fields, the files of the home folder.
    void Form_Load();

    // Lists another folder: full path.
    void setFolder(const QString& path) { folders_.setFolder(path); }

  private:
    const Services services_;
    WorkingTable table_;
    FileSelection selection_;
    FolderLists folders_;
    RuleFields fields_;
    RenameRules rules_;
    ReDating reDating_;
    RenamePerList perList_;
};

}  // namespace tarnwick::rename
