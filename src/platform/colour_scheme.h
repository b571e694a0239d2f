#pragma once

#include <QObject>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace tarnwick::platform {

// Whether the desktop asks its programs for dark windows, as its settings portal tells it
// (org.freedesktop.portal.Settings, the key color-scheme of org.freedesktop.appearance). Without
// a session bus or a portal the answer is no, without delay and without a message. UI thread.
class ColourScheme : public QObject {
    Q_OBJECT

  public:
    // Asks on the bus at `address`, none if that is empty, and waits for the answer for a tenth of
    // a second at most; one that comes later is a change.
    explicit ColourScheme(const QString& address = sessionBus());
    ~ColourScheme() override;

    bool dark() const { return dark_; }

    // The address of the session's bus as the desktop has it; empty where there is none. Unlike the
    // bus library's own search, this never starts a bus.
    static QString sessionBus();

  Q_SIGNALS:
    // dark() has another value.
    void changed();

  private Q_SLOTS:
    void settingChanged(const QDBusMessage& message);  // group, key, value

  private:
    void lateAnswer(QDBusPendingCallWatcher* call);
    void take(const QVariant& value);

    bool dark_ = false;
};

}  // namespace tarnwick::platform
