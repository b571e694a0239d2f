#pragma once

#include <QObject>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace tarnwick::platform {

class SessionBus;

// Whether the desktop prefers dark windows, as reported by its settings portal
// (org.freedesktop.portal.Settings, the key color-scheme of org.freedesktop.appearance). Without
// a session bus or a portal the answer is no, without delay and without a message. UI thread.
class ColourScheme : public QObject {
    Q_OBJECT

  public:
    // Asks the portal if `bus` answers, and waits for as long as SessionBus::patienceLeftMs() says;
    // a later answer is reported by changed(). `bus` must outlive this object.
    explicit ColourScheme(const SessionBus& bus);
    ~ColourScheme() override;

    bool dark() const { return dark_; }

  Q_SIGNALS:
    // dark() has changed.
    void changed();

  private Q_SLOTS:
    void settingChanged(const QDBusMessage& message);  // group, key, value

  private:
    void ask(const QString& address, int patienceMs);  // 0: does not wait
    void lateAnswer(QDBusPendingCallWatcher* call);
    void take(const QVariant& value);

    bool dark_ = false;
};

}  // namespace tarnwick::platform
