#pragma once

#include "platform/open_dialog.h"

namespace tarnwick::platform {

// Qt's file dialog. It begins in the current folder; where that folder holds exactly one
// recording, its name stands ready in the name box.
class DesktopOpenDialog : public OpenDialog {
  public:
    void setFilter(const QString& filter) override { filter_ = filter; }
    std::optional<Choice> ShowOpen() override;

  private:
    QString filter_;
};

// "Audio Files (*.wav)|*.wav" as Qt wants it; the patterns are told by the second of each pair.
QStringList nameFilters(const QString& classicFilter);

}  // namespace tarnwick::platform
