#include "batch/source_notices.h"

#include <QMap>
#include <algorithm>

#include "batch/words.h"
#include "platform/file_system.h"
#include "platform/notice_words.h"
#include "runtime/fault.h"

namespace tarnwick::batch {

namespace {

using platform::Notice;

constexpr qsizetype kExtension = 4;  // always the length of ".wav"

QString listedFiles(QStringList names) {
    std::transform(names.begin(), names.end(), names.begin(), platform::shownName);
    return platform::listed(names, kMostNames);
}

QString openAnew(const QString& first) {
    return u"Close this window, %1, remove the empty folder Raw_Files and open the Batch Processor "
           u"again."_qs.arg(first);
}

}  // namespace

QString stemOf(const QString& source) {
    if (source.size() < kExtension) runtime::invalidCall();
    return source.chopped(kExtension);
}

QString outputOf(const QString& source, const QString& extension) {
    return source.size() < kExtension ? QString() : stemOf(source) + extension;
}

std::optional<Notice> noticeOfNoSounds(const QList<platform::NameAndReason>& files, qsizetype all,
                                       const QString& folder) {
    if (files.isEmpty()) return {};
    QStringList names;
    QList<platform::NameAndReason> shown = files;
    for (platform::NameAndReason& file : shown) {
        names << file.name;
        file.name = platform::shownName(file.name);
    }
    const bool one = names.size() == 1;
    const QString waits = one ? u" cannot be loaded, and the run would get stuck there: "_qs
                              : u" cannot be loaded, and the run would get stuck at the first "
                                u"of them: "_qs;
    return Notice{u"%1 of "_qs.arg(names.size()) + filesOf(all) + waits +
                      platform::listedByReason(shown, kMostNames) + u'.',
                  platform::pathsIn(folder, names), u"No file has been moved."_qs,
                  openAnew(one ? u"take it out of the project folder"_qs
                               : u"take them out of the project folder"_qs)};
}

std::optional<Notice> noticeOfSharedNames(const QStringList& sources, const QString& folder) {
    QMap<QString, QStringList> byStem;
    for (const QString& source : sources)
        if (source.size() >= kExtension) byStem[stemOf(source)] << source;
    QStringList groups, names;
    for (const QStringList& each : std::as_const(byStem)) {
        if (each.size() < 2) continue;
        groups << listedFiles(each);
        names << each;
    }
    if (names.isEmpty()) return {};
    constexpr qsizetype kMostGroups = 3;
    const qsizetype more = groups.size() - kMostGroups;
    const QString others = more > 0 ? u" and %1 more such cases"_qs.arg(more) : QString();
    return Notice{
        u"These files would be written under the same name, so that only the last one "
        u"would be kept: "_qs +
            groups.first(std::min(groups.size(), kMostGroups)).join(u"; "_qs) + others + u'.',
        platform::pathsIn(folder, names), u"The sources are kept in any case, in Raw_Files."_qs,
        openAnew(u"rename all but one of them"_qs)};
}

std::optional<Notice> noticeOfForeignFiles(const QStringList& names, const QString& folder) {
    if (names.isEmpty()) return {};
    const bool one = names.size() == 1;
    return Notice{
        (one ? u"This file is not part of the run but has the name of an output, so it is "
               u"moved to Raw_Files: "_qs
             : u"These files are not part of the run but have the names of outputs, so "
               u"they are moved to Raw_Files: "_qs) +
            listedFiles(names) + u'.',
        platform::pathsIn(folder, names),
        u"Nothing in them changes."_qs,
        {}};
}

Notice noticeOfDialog(const QString& reason) {
    return {
        u"The dialog for choosing a file failed, so nothing was chosen"_qs + because(reason) + u'.',
        {},
        {},
        u"Press Browse again."_qs};
}

Notice noticeOfSpentWindow(const QString& rawFolder) {
    return {u"Process stays off, because a window can only be used for one run."_qs,
            {rawFolder},
            u"Nothing has been moved out of the folder that you chose."_qs,
            u"Close this window, remove the empty folder Raw_Files and open the Batch Processor "
            u"again."_qs};
}

std::optional<Notice> noticeOfSpace(qint64 needed, qint64 free, const QString& folder) {
    if (free < 0 || needed <= free) return {};
    return Notice{
        u"The disk of the project folder may be too small for this run: about %1 will be "
        u"written, and %2 is free."_qs.arg(platform::sizeText(needed), platform::sizeText(free)),
        {folder},
        u"The sources are kept in any case, in Raw_Files."_qs,
        u"Free some space on that disk now, while the run goes on."_qs};
}

}  // namespace tarnwick::batch
