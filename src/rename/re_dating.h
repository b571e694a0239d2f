#pragma once

#include <QObject>

#include "rename/preview_buttons.h"
#include "rename/services.h"
#include "rename/working_table.h"

namespace tarnwick::forms {
class frmRenameWiz;
}

namespace tarnwick::rename {

// Moves the dates of last modification of chosen files by a number of hours, each from its own
// date. It reaches the first file of the list, or as many as the last preview of new names counted:
// WorkingTable::viLastFile is the measure. UI thread; what fails takes the default path.
class ReDating : public QObject {
  public:
    ReDating(forms::frmRenameWiz& form, WorkingTable& table, const Services& services);

  private:
    void cbReDatePreview_Click();
    void cbReDateCancel_Click();
    void cbReDate_Click();
    void takeSelection();
    void emptyFields();

    forms::frmRenameWiz& form_;
    WorkingTable& table_;
    const Services& services_;
    const PreviewButtons buttons_;
};

}  // namespace tarnwick::rename
