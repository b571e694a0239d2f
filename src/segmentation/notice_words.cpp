#include "segmentation/notice_words.h"

#include <algorithm>

#include "runtime/file_names.h"

namespace tarnwick::segmentation {

QString bareName(const QString& path) { return runtime::readableFileName(path.section(u'/', -1)); }

QString enumerated(const QStringList& names) {
    constexpr qsizetype kMost = 10;
    if (names.size() == 1) return names.first();
    const qsizetype others = std::max<qsizetype>(names.size() - kMost, 0);
    const QString last = others == 0   ? names.last()
                         : others == 1 ? u"1 other"_qs
                                       : QString::number(others) + u" others"_qs;
    const qsizetype named = others == 0 ? names.size() - 1 : kMost;
    return names.mid(0, named).join(u", "_qs) + u" and "_qs + last;
}

QString loadAgain() {
    return u"Move or rename the folder BU_Source_Files, then load the session again."_qs;
}

}  // namespace tarnwick::segmentation
