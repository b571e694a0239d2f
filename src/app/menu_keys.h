#pragma once

#include <QObject>

namespace tarnwick::app {

// Lets the menu's keys work while a text box has the focus. A text box claims Ctrl+E and Ctrl+Z for
// itself; it keeps Ctrl+Z only as long as it has typing of its own to take back.
class MenuKeys : public QObject {
  public:
    // Watches every text box of `window` that is there now. UI thread.
    explicit MenuKeys(QWidget& window);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tarnwick::app
