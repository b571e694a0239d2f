#include "forms/overlay.h"

#include <QCoreApplication>
#include <QEvent>

#include "forms/frm_main.h"

namespace tarnwick::forms {

void showOverlay(frmMain& form, QWidget& frame) {
    frame.move((form.frTarnwick->width() - frame.width()) / 2, 280);
    frame.show();
    frame.raise();
    repaintNow(form);
}

void repaintNow(QWidget& window) {
    QCoreApplication::sendPostedEvents(window.window(), QEvent::UpdateRequest);
}

}  // namespace tarnwick::forms
