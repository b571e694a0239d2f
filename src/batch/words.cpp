#include "batch/words.h"

#include "platform/notice_words.h"

namespace tarnwick::batch {

QString typedFor(QStringView name, const QString& text) {
    return name.toString() + u": '"_qs + text + u'\'';
}

QString filesOf(qsizetype count) { return platform::counted(count, u"file"_qs, u"files"_qs); }

QString filesOfAllWere(qsizetype count, qsizetype all) {
    return u"%1 of %2"_qs.arg(count).arg(filesOf(all)) + (count == 1 ? u" was"_qs : u" were"_qs);
}

QString because(const QString& reason) { return reason.isEmpty() ? QString() : u": "_qs + reason; }

}  // namespace tarnwick::batch
