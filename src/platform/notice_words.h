#pragma once

#include <QList>
#include <QStringList>

#include "platform/notices.h"

// Words that the sentences of notices share. All functions are pure.

namespace tarnwick::platform {

// "1 file" or "3 files".
QString counted(qsizetype count, const QString& one, const QString& many);

// "a", "a and b", "a, b and c". Of more items, the first `most` are named: "a, b, c and 4 more".
// One item beyond `most` is still named, as "1 more" would be no shorter. `all`: the number of
// items with repeated ones, if `items` lacks these; "more" then counts them too.
QString listed(const QStringList& items, qsizetype most, qsizetype all = 0);

// A name and why something failed with it, in words that continue a sentence. The reason may be
// empty.
struct NameAndReason {
    QString name;
    QString reason;
};

// "a and b (the disk is full); c (the disk is read-only)", in the order in which the reasons first
// occur. Each group names a file once and at most as many files as listed() does. `pattern` joins
// the names, %1, and their reason, %2.
QString listedByReason(const QList<NameAndReason>& items, qsizetype most,
                       const QString& pattern = u"%1 (%2)"_qs);

// A name for display (readableFileName()). Of a name with more than 60 characters, the middle is
// left out.
QString shownName(const QString& name);
// The same for the last part of a path. A separator at the end of the path is ignored.
QString bareName(const QString& path);

// "5 bytes", "1.2 GB"; 1 GB is 10^9 bytes.
QString sizeText(qint64 bytes);

// All sentences of a notice, without its files.
QString sentencesOf(const Notice& notice);

}  // namespace tarnwick::platform
