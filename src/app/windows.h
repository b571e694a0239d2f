#pragma once

#include <QMdiSubWindow>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

#include "app/services.h"

namespace tarnwick::forms {
class frmBatchProcessor;
class frmFrame;
class frmMain;
class frmRenameWiz;
}  // namespace tarnwick::forms

namespace tarnwick::app {

// The frame's child windows, of which exactly one is shown: the main window, or in its stead the
// Batch Processor or the Rename Wizard. The menu bar goes with the main window. UI thread.
class Windows : public QObject {
  public:
    Windows(forms::frmFrame& frame, forms::frmMain& main, const Services& services);
    ~Windows() override;

    void showMain();
    void hideMain();
    void showBatchProcessor();  // made anew on each opening
    void showRenameWizard();    // likewise

    // Called when the Batch Processor has closed and before the main window shows again.
    std::function<void()> batchProcessorClosed;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QMdiSubWindow* addChild(QWidget& form);
    void centre(QMdiSubWindow& child) const;  // over the main window's place
    void listOpenWindows();
    void unloadAll();

    forms::frmFrame& frame_;
    forms::frmMain& main_;
    const Services& services_;
    QPointer<QMdiSubWindow> mainChild_;
    QPointer<QMdiSubWindow> batchChild_;
    QPointer<QMdiSubWindow> renameChild_;
    QList<QAction*> listed_;  // entries of the Windows menu for the open child windows
};

}  // namespace tarnwick::app
