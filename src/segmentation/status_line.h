#pragma once

#include <QString>

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// The status line and the bar below it, which loading, editing, analysis and playback share: each
// shows its own progress, and whoever finishes hides the bar. Every change is painted at once.
class StatusLine {
  public:
    explicit StatusLine(forms::frmMain& form) : form_(form) {}

    void write(const QString& text);

    // A long step begins: its text, the bar shown at 0.
    void started(const QString& text);

    // A step has come to `percent`; the same percent again costs nothing.
    void advanced(const QString& prefix, qint32 percent);

    // A step is over: its text, the bar hidden.
    void finished(const QString& text);

    // The long step that is under way, in the box over the list.
    void calculating(const QString& text);

  private:
    forms::frmMain& form_;
};

}  // namespace tarnwick::segmentation
