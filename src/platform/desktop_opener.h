#pragma once

#include "platform/opener.h"

namespace tarnwick::platform {

class DesktopOpener : public Opener {
  public:
    void open(const QString& target) override;
};

}  // namespace tarnwick::platform
