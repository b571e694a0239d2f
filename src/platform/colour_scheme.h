#pragma once

#include <QObject>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace tarnwick::platform {

class SessionBus;

// Whether the desktop asks its programs for dark windows, as its settings portal tells it
// (org.freedesktop.portal.Settings, the key color-scheme of org.freedesktop.appearance). Without
// a session bus or a portal the answer is no, without delay and without a message. UI thread.
class ColourScheme : public QObject {
    Q_OBJECT

  public:
    // Asks on `bus` if that answers, and waits for the portal as long as its greeting has left
    // patience for; what is told later is a change. `bus` outlives this object.
    explicit ColourScheme(const SessionBus& bus);
    ~ColourScheme() override;

    bool dark() const { return dark_; }

  Q_SIGNALS:
    // dark() has another value.
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
