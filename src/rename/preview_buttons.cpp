#include "rename/preview_buttons.h"

#include <QPushButton>

namespace tarnwick::rename {

void PreviewButtons::showPreviewing(bool previewing) const {
    // The focus moves before a button is hidden, because hiding the button with the focus passes
    // it to the next control.
    QPushButton* const next = previewing ? cancel : preview;
    next->show();
    if (preview->hasFocus() || cancel->hasFocus() || carryOut->hasFocus()) next->setFocus();
    preview->setVisible(!previewing);
    cancel->setVisible(previewing);
    carryOut->setVisible(previewing);
}

}  // namespace tarnwick::rename
