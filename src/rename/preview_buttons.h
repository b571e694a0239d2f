#pragma once

class QPushButton;

namespace tarnwick::rename {

// Three buttons in one place: normally the first is shown, during a preview the two others. If one
// of them has the keyboard focus, it goes to Cancel during a preview, and back to the first after.
struct PreviewButtons {
    QPushButton* preview;
    QPushButton* cancel;
    QPushButton* carryOut;

    void showPreviewing(bool previewing) const;
};

}  // namespace tarnwick::rename
