#pragma once

#include <QString>

namespace tarnwick::platform {

class SessionBus;

// The desktop's notification service (org.freedesktop.Notifications). Does nothing
// without a session bus or such a service. UI thread; no call waits for the service.
class DesktopNotifications {
  public:
    // `bus` must outlive this object.
    explicit DesktopNotifications(const SessionBus& bus) : bus_(bus) {}
    ~DesktopNotifications();

    void show(const QString& sentence);

  private:
    const SessionBus& bus_;
};

}  // namespace tarnwick::platform
