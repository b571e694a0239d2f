#pragma once

#include <QString>
#include <optional>

namespace tarnwick::platform {

// A window's file open dialog `cmdlg`.
class OpenDialog {
  public:
    struct Choice {
        QString FileName;   // full path
        QString FileTitle;  // name without the folder
    };

    virtual ~OpenDialog() = default;

    virtual void setTitle(const QString& title) = 0;  // "Open" before the first call
    // "Description|*.a; *.b", pairs joined by bars; the first is on when the dialog shows. Stays
    // until the next call.
    virtual void setFilter(const QString& filter) = 0;
    // Shows the dialog, in the project's folder at first; nothing when it was cancelled. The
    // process's current folder becomes the folder of the chosen file.
    virtual std::optional<Choice> ShowOpen() = 0;
};

}  // namespace tarnwick::platform
