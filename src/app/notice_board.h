#pragma once

#include <QDateTime>
#include <QList>
#include <QObject>
#include <optional>

#include "platform/clock.h"
#include "platform/notices.h"

namespace tarnwick::app {

// The notices of this run of the program. Knows nothing of how they are shown. UI thread.
class NoticeBoard : public QObject, public platform::Notices {
    Q_OBJECT

  public:
    struct Entry {
        QDateTime time;  // of the last one
        platform::Notice notice;
        int count = 1;  // equal notices, one after the other or not
    };

    explicit NoticeBoard(const platform::Clock& clock) : clock_(clock) {}

    void tell(const platform::Notice& notice) override;
    void note(const platform::Notice& notice) override;
    void startSession() override { dismiss(); }

    // All notices, the newest last. The oldest are dropped after kMost.
    static constexpr qsizetype kMost = 500;
    const QList<Entry>& entries() const { return entries_; }

    // The told notices that have not been dismissed, the newest last.
    const QList<Entry>& shown() const { return shown_; }
    void dismiss();

  Q_SIGNALS:
    void changed();                      // entries() or shown()
    void told(const QString& sentence);  // a notice was told, and changed() emitted

  private:
    static void enter(QList<Entry>& list, const Entry& entry);

    const platform::Clock& clock_;
    QList<Entry> entries_;
    QList<Entry> shown_;
};

// The notice in sentences, without its files, with the number of times if it came repeatedly.
QString sentencesOf(const NoticeBoard::Entry& entry);

}  // namespace tarnwick::app
