#pragma once

#include <QObject>

#include "platform/opener.h"

namespace tarnwick::platform {

// Starts the desktop's own opener detached, without the program's terminal, and does not wait for
// it. Pages are http and https addresses; anything else must be the full path of an existing file
// or folder. Failures that the opener reports are told while this object exists.
class DesktopOpener : public QObject, public Opener {
  public:
    void open(const QString& target, const Failed& failed) override;

  private:
    void tellWhenEnded(int report, const Failed& failed);
};

}  // namespace tarnwick::platform
