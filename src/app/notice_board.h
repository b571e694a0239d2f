#pragma once

#include <QDateTime>
#include <QList>
#include <QObject>
#include <optional>

#include "platform/clock.h"
#include "platform/notices.h"

namespace tarnwick::app {

// Stores the notices of this run of the program; others show them. UI thread.
class NoticeBoard : public QObject, public platform::Notices {
    Q_OBJECT

  public:
    struct Entry {
        QDateTime time;  // of the latest one
        platform::Notice notice;
        int count = 1;  // number of equal notices
    };

    explicit NoticeBoard(const platform::Clock& clock) : clock_(clock) {}

    void tell(const platform::Notice& notice) override;
    void note(const platform::Notice& notice) override;
    void settle(const QString& topic) override;
    void startSession() override { dismiss(); }

    // All notices, the newest last. The oldest are dropped after kMost.
    static constexpr qsizetype kMost = 500;
    const QList<Entry>& entries() const { return entries_; }

    // The notices that tell() got and that have not been dismissed, the newest last.
    const QList<Entry>& shown() const { return shown_; }
    void dismiss();

  Q_SIGNALS:
    void changed();                      // entries() or shown() has changed
    void told(const QString& sentence);  // tell() was called; emitted after changed()

  private:
    bool hideOthers(const QString& topic, const platform::Notice* kept);
    static void enter(QList<Entry>& list, const Entry& entry);

    const platform::Clock& clock_;
    QList<Entry> entries_;
    QList<Entry> shown_;
};

// The notice in sentences, without its files, with the number of times if it came repeatedly.
QString sentencesOf(const NoticeBoard::Entry& entry);

}  // namespace tarnwick::app
