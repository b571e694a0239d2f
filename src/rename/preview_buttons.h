#pragma once

class QPushButton;

namespace tarnwick::rename {

// Three buttons at one place: at rest the first is shown, during a preview the two others. For who
// works by keys, the focus goes on where it was: from the preview to Cancel, and back.
struct PreviewButtons {
    QPushButton* preview;
    QPushButton* cancel;
    QPushButton* carryOut;

    void showPreviewing(bool previewing) const;
};

}  // namespace tarnwick::rename
