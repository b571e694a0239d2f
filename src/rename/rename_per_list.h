#pragma once

#include <QObject>
#include <QSet>

#include "rename/services.h"
#include "rename/working_table.h"

namespace tarnwick::forms {
class frmRenameWiz;
}

namespace tarnwick::rename {

class FileSelection;

// Renames the files of a workbook's folder as its first sheet tells: present names in column A, new
// ones in column B. The originals move to Original_Files, and copies take the new names, so that
// whatever fails, every file is still there. UI thread.
class RenamePerList : public QObject {
  public:
    RenamePerList(forms::frmRenameWiz& form, WorkingTable& table, FileSelection& selection,
                  const Services& services);

  private:
    void cbRenamePerList_Click();
    void renameAsListed();
    std::span<model::RenameRecord> readList(const documents::Sheet& sheet);
    void moveOriginals(std::span<const model::RenameRecord> records);
    void copyUnderNewNames(std::span<const model::RenameRecord> records);

    forms::frmRenameWiz& form_;
    WorkingTable& table_;
    FileSelection& selection_;
    const Services& services_;
};

}  // namespace tarnwick::rename
