#pragma once

#include <QObject>

namespace tarnwick::app {

// Lets the menu's shortcuts work while a text box has the focus. Text boxes claim Ctrl+E and Ctrl+Z
// for themselves; here they keep Ctrl+Z only while they have typing of their own to undo.
class MenuKeys : public QObject {
  public:
    // Watches every text box that `window` has now. UI thread.
    explicit MenuKeys(QWidget& window);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tarnwick::app
