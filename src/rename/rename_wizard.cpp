#include "rename/rename_wizard.h"

#include "forms/frm_rename_wiz.h"

namespace tarnwick::rename {

RenameWizard::RenameWizard(forms::frmRenameWiz& form, Services services)
    : QObject(&form),
      services_(std::move(services)),
      selection_(form, services_),
      folders_(form, table_, services_),
      fields_(form, services_),
      rules_(form, table_, services_),
      reDating_(form, table_, services_),
      perList_(form, table_, selection_, services_) {}

void RenameWizard::Form_Load() {
    selection_.cbClear_Click();
    folders_.open();
}

}  // namespace tarnwick::rename
