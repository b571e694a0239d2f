#pragma once

#include "platform/open_dialog.h"

namespace tarnwick::platform {

// Qt's file dialog, starting in the current folder. If the first filter is for recordings and the
// folder holds exactly one recording, its name is already in the name box.
class DesktopOpenDialog : public OpenDialog {
  public:
    void setTitle(const QString& title) override { title_ = title; }
    void setFilter(const QString& filter) override { filter_ = filter; }
    std::optional<Choice> ShowOpen() override;

  private:
    QString title_ = QStringLiteral("Open");
    QString filter_;
};

// The file of `folder` to put into the name box for the first of `filters` (as nameFilters returns
// them); empty for none.
QString readyName(const QString& folder, const QStringList& filters);

// Converts "Audio Files (*.wav)|*.wav" to Qt's form; the patterns are the second of each pair.
QStringList nameFilters(const QString& classicFilter);

}  // namespace tarnwick::platform
