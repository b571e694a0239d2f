#pragma once

#include "platform/boxes.h"

namespace tarnwick::platform {

// The desktop's message and input boxes, modal to the program.
class DesktopBoxes : public Boxes {
  public:
    void plain(const QString& text) override;
    void critical(const QString& title, const QString& text) override;
    bool askYesNo(const QString& title, const QString& text) override;
    std::optional<QString> input(const QString& prompt) override;
};

}  // namespace tarnwick::platform
