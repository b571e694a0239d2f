#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

#include "app/services.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::runtime {
class Line;
}

namespace tarnwick::app {

// The preferences page, which replaces the work area while it is open, and the settings on it and
// in the work area, stored in rows 17, 18 and 19. UI thread.
class Preferences : public QObject {
  public:
    // `opened` is called when the page is shown and has the focus.
    Preferences(forms::frmMain& form, const Services& services, std::function<void()> opened);

    // Fills the settings controls from the database and tells of values that would end a load.
    // Guarded.
    void PreferencesLoad();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void connectPage();
    void mnuPreferences_Click();
    void cbPreferencesSave_Click();
    void cbPreferencesIgnore_Click();
    void opSourceFileFormat_Click();
    void OpScriptFormat_Click();
    void slScaling_Scroll();
    void lbRecalcTimer_DblClick();

    void showSegmentation(const settings::Record& row);
    void showScriptAndWindow(const settings::Record& row);
    void showScriptFormat(const settings::Record& row);
    void showScale(const settings::Record& row);
    void showNaming(const settings::Record& row);
    void noticeScale();
    void saveRows(runtime::Line& line);
    void tellOfSettings() const;
    QString updateOfRow17() const;
    QString updateOfRow18() const;
    QString updateOfRow19(int sourceFormat) const;
    int sourceFormatIndex() const;
    void enableTimer(bool on);
    void leavePage();

    forms::frmMain& form_;
    const Services& services_;
    std::function<void()> opened_;
    QPointer<QWidget> focusBefore_;  // the control of the work area that had the focus
};

}  // namespace tarnwick::app
