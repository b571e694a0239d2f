#pragma once

#include <QWidget>

namespace tarnwick::forms {

class frmMain;

// Shows one of the progress frames over the work area: centred, 280 pixels down, in front.
void showOverlay(frmMain& form, QWidget& frame);

// Paints at once whatever of the window is waiting to be painted, and nothing else.
void repaintNow(QWidget& window);

}  // namespace tarnwick::forms
