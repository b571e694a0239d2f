#pragma once

#include "app/services.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::app {

// The settings of the main window, kept in rows 17, 18 and 19. UI thread.
class Preferences {
  public:
    Preferences(forms::frmMain& form, const Services& services)
        : form_(form), services_(services) {}

    // Fills the settings controls from the database. Guarded.
    void PreferencesLoad();

  private:
    void showSegmentation(const settings::Record& row);
    void showScriptAndWindow(const settings::Record& row);
    void showScriptFormat(const settings::Record& row);
    void showScale(const settings::Record& row);
    void showNaming(const settings::Record& row);

    forms::frmMain& form_;
    const Services& services_;
};

}  // namespace tarnwick::app
