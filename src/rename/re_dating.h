#pragma once

#include <QObject>

#include "rename/preview_buttons.h"
#include "rename/services.h"
#include "rename/working_table.h"

namespace tarnwick::forms {
class frmRenameWiz;
}

namespace tarnwick::rename {

// Shifts the dates of last modification of the chosen files by a number of hours. The number of
// files is given by WorkingTable::viLastFile: only the first of the list, or as many as the last
// preview of new names counted. UI thread. Faults go to FailurePath::Default_Path.
class ReDating : public QObject {
  public:
    ReDating(forms::frmRenameWiz& form, WorkingTable& table, const Services& services);

  private:
    void cbReDatePreview_Click();
    void cbReDateCancel_Click();
    void cbReDate_Click();
    void takeSelection();
    QStringList taken() const;
    QStringList leftOut() const;
    void markProtected();
    void emptyFields();

    forms::frmRenameWiz& form_;
    WorkingTable& table_;
    const Services& services_;
    const PreviewButtons buttons_;
};

}  // namespace tarnwick::rename
