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

// The frame's child windows. Exactly one is shown: the main window, or instead of it the Batch
// Processor or the Rename Wizard. The menu bar is shown only with the main window. UI thread.
class Windows : public QObject {
  public:
    // `EDT`: the main window's sound editor.
    Windows(forms::frmFrame& frame, forms::frmMain& main, const Services& services,
            engine::SoundEditor& EDT);

    void showMain();
    bool mainIsShown() const { return instead_.isNull(); }
    bool batchProcessorIsOpen() const;
    // Scrolls to a control of the shown window, so that all of it is visible if there is room.
    void reveal(const QWidget& control);
    // Each opens a new window; if one of that kind is already open, nothing happens.
    void showBatchProcessor();
    void showRenameWizard();

    // Called when the Batch Processor closes; shows the main window again.
    std::function<void()> batchProcessorClosed;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void hideMain();
    template <class Form>
    Form* openInstead(std::function<void()> closed);
    void showInstead();
    void insteadCloses();
    void deleteWhenUnused(QMdiSubWindow* child, int openedLevel);
    void listOpenWindows();
    void unloadAll();

    forms::frmFrame& frame_;
    forms::frmMain& main_;
    const Services& services_;
    engine::SoundEditor& EDT_;
    QPointer<QMdiSubWindow> mainChild_;
    QPointer<QMdiSubWindow> instead_;      // the window shown instead of the main window
    int insteadLevel_ = 0;                 // level of the event loop in which it was opened
    std::function<void()> stopInstead_;    // stops all processing in it
    std::function<void()> insteadClosed_;  // shows the main window again
    QList<QAction*> listed_;               // entries of the Windows menu for the open child windows
};

}  // namespace tarnwick::app
