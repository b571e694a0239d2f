#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>

#include "platform/descriptor.h"

namespace tarnwick::platform {

// Calls `changed` from the event loop whenever a volume is mounted or unmounted while this object
// exists. Without /proc it is never called. `changed` must not throw.
class MountWatch : public QObject {
  public:
    explicit MountWatch(std::function<void()> changed);

  private:
    Descriptor table_;
    std::unique_ptr<QSocketNotifier> notifier_;  // deleted before the table is closed
};

}  // namespace tarnwick::platform
