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
};

}  // namespace tarnwick::forms
