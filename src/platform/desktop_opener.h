#pragma once

#include "platform/opener.h"

namespace tarnwick::platform {

// Hands the target to the desktop's own opener, which is started by itself, without the program's
// terminal, and not waited for. Pages are http and https addresses; anything else is a file or a
// folder with its full path, which must exist.
class DesktopOpener : public Opener {
  public:
    void open(const QString& target) override;
};

}  // namespace tarnwick::platform
