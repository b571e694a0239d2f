#pragma once

#include "platform/opener.h"

namespace tarnwick::platform {

// Starts the desktop's own opener detached, without the program's terminal, and does not wait for
// it. Pages are http and https addresses; anything else must be the full path of an existing file
// or folder.
class DesktopOpener : public Opener {
  public:
    void open(const QString& target) override;
};

}  // namespace tarnwick::platform
