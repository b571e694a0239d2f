#pragma once

#include <QObject>
#include <QSet>

#include "rename/rename_notices.h"
#include "rename/services.h"
#include "rename/working_table.h"

namespace tarnwick::forms {
class frmRenameWiz;
}

namespace tarnwick::rename {

class FileSelection;

// Renames the files in a workbook's folder according to its first sheet: current names in column A,
// new names in column B. The originals are moved to Original_Files and copied under the new names,
// so no file is lost if anything fails. UI thread.
class RenamePerList : public QObject {
  public:
    RenamePerList(forms::frmRenameWiz& form, WorkingTable& table, FileSelection& selection,
                  const Services& services);

  private:
    void cbRenamePerList_Click();
    void renameAsListed();
    void noteEnd(const QString& reason);
    void showEnd();
    std::span<model::RenameRecord> readList(const documents::Sheet& sheet);
    void moveToOriginals(const QString& path);
    void moveOriginals(std::span<const model::RenameRecord> records);
    void copyUnderNewNames(std::span<const model::RenameRecord> records);

    forms::frmRenameWiz& form_;
    WorkingTable& table_;
    FileSelection& selection_;
    const Services& services_;
    PerListRun run_;
};

}  // namespace tarnwick::rename
