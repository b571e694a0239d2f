#pragma once

#include "platform/open_dialog.h"

namespace tarnwick::platform {

// Qt's file dialog. It begins in the current folder; where that folder holds exactly one
// recording, its name stands ready in the name box, if the dialog is for recordings at first.
class DesktopOpenDialog : public OpenDialog {
  public:
    void setTitle(const QString& title) override { title_ = title; }
    void setFilter(const QString& filter) override { filter_ = filter; }
    std::optional<Choice> ShowOpen() override;

  private:
    QString title_ = QStringLiteral("Open");
    QString filter_;
};

// Which file of `folder` stands ready in the name box under the first of `filters`, as nameFilters
// gives them; empty for none.
QString readyName(const QString& folder, const QStringList& filters);

// "Audio Files (*.wav)|*.wav" as Qt wants it; the patterns are told by the second of each pair.
QStringList nameFilters(const QString& classicFilter);

}  // namespace tarnwick::platform
