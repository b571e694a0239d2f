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
    // "Description|*.a; *.b", pairs joined by bars; the first is selected when the dialog opens.
    // Stays in force until the next call.
    virtual void setFilter(const QString& filter) = 0;
    // Shows the dialog, starting in the project folder; nullopt if it was cancelled. The process's
    // current folder becomes the folder of the chosen file.
    virtual std::optional<Choice> ShowOpen() = 0;
};

}  // namespace tarnwick::platform
