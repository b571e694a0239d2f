#include "app/notice_board.h"

#include <algorithm>

#include "platform/notice_words.h"

namespace tarnwick::app {

// If the list already has an equal notice, it moves to the end and its count goes up.
void NoticeBoard::enter(QList<Entry>& list, const Entry& entry) {
    const auto equal = std::ranges::find(list, entry.notice, &Entry::notice);
    const int before = equal == list.end() ? 0 : equal->count;
    if (before > 0) list.erase(equal);
    list << Entry{entry.time, entry.notice, before + 1};
    if (list.size() > kMost) list.removeFirst();
}

void NoticeBoard::tell(const platform::Notice& notice) {
    enter(entries_, {clock_.now(), notice});
    hideOthers(notice.topic, &notice);
    enter(shown_, {clock_.now(), notice});
    Q_EMIT changed();
    Q_EMIT told(notice.what);
}

void NoticeBoard::note(const platform::Notice& notice) {
    enter(entries_, {clock_.now(), notice});
    Q_EMIT changed();
}

void NoticeBoard::settle(const QString& topic) {
    if (hideOthers(topic, nullptr)) Q_EMIT changed();
}

// Hides the notices of the topic except one equal to `kept`. Returns whether there were any.
bool NoticeBoard::hideOthers(const QString& topic, const platform::Notice* kept) {
    if (topic.isEmpty()) return false;
    const auto outdated = [&](const Entry& entry) {
        return entry.notice.topic == topic && (kept == nullptr || entry.notice != *kept);
    };
    return shown_.removeIf(outdated) > 0;
}

void NoticeBoard::dismiss() {
    if (shown_.isEmpty()) return;
    shown_.clear();
    Q_EMIT changed();
}

QString sentencesOf(const NoticeBoard::Entry& entry) {
    platform::Notice notice = entry.notice;
    if (entry.count > 1) notice.what += u" (%1 times.)"_qs.arg(entry.count);
    return platform::sentencesOf(notice);
}

}  // namespace tarnwick::app
