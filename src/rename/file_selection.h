#pragma once

#include <QObject>

#include "rename/services.h"

namespace tarnwick::forms {
class frmRenameWiz;
}

namespace tarnwick::rename {

// Chooses files of the folder, and arranges the two lists. UI thread.
class FileSelection : public QObject {
  public:
    FileSelection(forms::frmRenameWiz& form, const Services& services);

    void cbRemoveAll_Click();
    void cbClear_Click();

  private:
    void cbAdd_Click();
    void cbAddAll_Click();
    void cbRemove_Click();
    void cbFlip_Click();

    forms::frmRenameWiz& form_;
};

}  // namespace tarnwick::rename
