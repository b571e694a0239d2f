#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

#include "app/services.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::app {

// The preferences page, which stands in the place of the work area while it is open, and the
// settings on it and in the work area, kept in rows 17, 18 and 19. UI thread.
class Preferences : public QObject {
  public:
    // `opened` is told when the page has come up and has the keyboard.
    Preferences(forms::frmMain& form, const Services& services, std::function<void()> opened);

    // Fills the settings controls from the database. Guarded.
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
    QString updateOfRow17() const;
    QString updateOfRow18() const;
    QString updateOfRow19(int sourceFormat) const;
    int sourceFormatIndex() const;
    void enableTimer(bool on);
    void leavePage();

    forms::frmMain& form_;
    const Services& services_;
    std::function<void()> opened_;
    QPointer<QWidget> focusBefore_;  // where in the work area the keyboard was
};

}  // namespace tarnwick::app
