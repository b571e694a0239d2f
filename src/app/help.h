#pragma once

#include "app/services.h"
#include "forms/frm_about.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::app {

// The Help menu with its outside documents, the About box, and the project folder in the desktop's
// file manager. If a document does not open, there is no box, only an entry in the list of
// notices.
// UI thread.
class Help {
  public:
    Help(forms::frmMain& form, const Services& services);

  private:
    void mnuManual_Click();
    void open(const QString& target);
    void openPage(QStringView label, const QString& notice, const QString& address);
    void mnuHelpAbout_Click();
    void aboutLoad();

    const Services& services_;
    forms::frmAbout frmAbout_;
};

}  // namespace tarnwick::app
