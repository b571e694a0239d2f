#include "rename/preview_buttons.h"

#include <QPushButton>

namespace tarnwick::rename {

void PreviewButtons::showPreviewing(bool previewing) const {
    // The new place of the focus is shown first: one that is hidden passes it on to the next
    // control.
    QPushButton* const next = previewing ? cancel : preview;
    next->show();
    if (preview->hasFocus() || cancel->hasFocus() || carryOut->hasFocus()) next->setFocus();
    preview->setVisible(!previewing);
    cancel->setVisible(previewing);
    carryOut->setVisible(previewing);
}

}  // namespace tarnwick::rename
