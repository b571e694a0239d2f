#pragma once

#include <QMainWindow>
#include <QMdiArea>

namespace tarnwick::forms {

// The frame window as data: one area for the child windows and the place for their menu bar.
// Design size 13830 by 10635 twips at (120, 450). Its caption is set at start-up.
class frmFrame : public QMainWindow {
  public:
    frmFrame();

    QMdiArea* mdiArea;

    // Brings the window, with room for its title bar and borders, into the free area of a screen:
    // moved where it sticks out, and made smaller where it is too large, with scroll bars that
    // lead to the rest.
    void keepWithin(const QRect& free);

    // Scrolls so that a control of a child window can be seen; its upper left part if it is larger
    // than the area.
    void reveal(const QWidget& control);

  protected:
    void changeEvent(QEvent* event) override;
};

}  // namespace tarnwick::forms
