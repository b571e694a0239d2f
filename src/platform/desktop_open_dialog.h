#pragma once

#include <functional>

#include "platform/open_dialog.h"

namespace tarnwick::platform {

// Qt's file dialog. It begins in the project's folder; where that holds exactly one recording, its
// name stands ready in the name box, if the dialog is for recordings at first. Without such a
// folder it begins in the operator's home. It keeps nothing of what it has shown.
class DesktopOpenDialog : public OpenDialog {
  public:
    // `projectFolder` is asked each time; empty for none.
    explicit DesktopOpenDialog(std::function<QString()> projectFolder)
        : projectFolder_(std::move(projectFolder)) {}

    void setTitle(const QString& title) override { title_ = title; }
    void setFilter(const QString& filter) override { filter_ = filter; }
    std::optional<Choice> ShowOpen() override;

  private:
    std::function<QString()> projectFolder_;
    QString title_ = QStringLiteral("Open");
    QString filter_;
};

// Which file of `folder` stands ready in the name box under the first of `filters`, as nameFilters
// gives them; empty for none.
QString readyName(const QString& folder, const QStringList& filters);

// "Audio Files (*.wav)|*.wav" as Qt wants it; the patterns are told by the second of each pair.
QStringList nameFilters(const QString& classicFilter);

}  // namespace tarnwick::platform
