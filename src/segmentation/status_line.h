#pragma once

#include <QString>

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// The status line and the bar below it, shared by loading, editing, analysis and playback. Each
// shows its own progress and hides the bar when it ends. Every change is painted at once.
class StatusLine {
  public:
    explicit StatusLine(forms::frmMain& form) : form_(form) {}

    void write(const QString& text);

    // A long step begins: shows the text, and the bar at 0.
    void started(const QString& text);

    // Shows the progress of a step; does nothing if `percent` has not changed.
    void advanced(const QString& prefix, qint32 percent);

    // A step has ended: shows the text and hides the bar.
    void finished(const QString& text);

    // Shows the current long step in the box over the list.
    void calculating(const QString& text);

  private:
    forms::frmMain& form_;
};

}  // namespace tarnwick::segmentation
