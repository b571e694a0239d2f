#pragma once

#include <functional>

#include "platform/open_dialog.h"

namespace tarnwick::platform {

// Qt's file dialog, starting in the project folder, or in the operator's home where there is none.
// If the first filter is for recordings and the folder holds exactly one recording, its name is
// already in the name box. The dialog saves nothing.
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

// What a dialog answers for the file with this full path. The file's folder becomes the process's
// current folder.
OpenDialog::Choice chosenFile(const QString& path);

// Wildcards of the files that can be a recording, for bare names in any case.
const QStringList& recordingPatterns();

// The file of `folder` to put into the name box for the first of `filters` (as nameFilters returns
// them); empty for none.
QString readyName(const QString& folder, const QStringList& filters);

// Converts "Audio Files (*.wav)|*.wav" to Qt's form; the patterns are the second of each pair.
QStringList nameFilters(const QString& classicFilter);

}  // namespace tarnwick::platform
