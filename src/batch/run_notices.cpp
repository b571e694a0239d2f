#include "batch/run_notices.h"

#include "batch/words.h"
#include "platform/file_system.h"
#include "platform/notice_words.h"

namespace tarnwick::batch {

namespace {

using platform::Notice;

constexpr Trouble kTroubles[] = {Trouble::NotWritten, Trouble::Replaced,    Trouble::Empty,
                                 Trouble::Uncut,      Trouble::Inaudible,   Trouble::EndsUnknown,
                                 Trouble::EditFailed, Trouble::StepsLeftOut};

// What happened to the files, as the predicate of a sentence.
QString predicateOf(Trouble trouble, bool one) {
    switch (trouble) {
        case Trouble::NotWritten:
            return u"not written"_qs;
        case Trouble::Replaced:
            return one ? u"written, but its output was replaced by a later one of the same name"_qs
                       : u"written, but their outputs were replaced by later ones of the same "
                         u"name"_qs;
        case Trouble::Empty:
            return u"emptied, because the cut is as long as the sound or longer"_qs;
        case Trouble::Uncut:
            return one ? u"not cut at its end, because the cut is longer than the sound"_qs
                       : u"not cut at their end, because the cut is longer than the sound"_qs;
        case Trouble::Inaudible:
            return u"treated as silence, because nothing in "_qs + (one ? u"it"_qs : u"them"_qs) +
                   u" is louder than the threshold"_qs;
        case Trouble::EndsUnknown:
            return u"written with wrong silences, because the search for them failed"_qs;
        case Trouble::EditFailed:
            return u"not processed completely"_qs;
        case Trouble::StepsLeftOut:
            return u"written without a step, because the silence at the end already had the "
                   u"right length"_qs;
    }
    return {};
}

// "2 of 9 files were not written: a.wav and b.wav (the disk is full)."
QString sentenceOf(const RunReport& report, Trouble trouble) {
    QList<platform::NameAndReason> items;
    QStringList files;
    for (const Mishap& mishap : report.mishaps) {
        if (mishap.trouble != trouble) continue;
        items << platform::NameAndReason{platform::shownName(mishap.file), mishap.reason};
        files << mishap.file;
    }
    files.removeDuplicates();
    if (files.isEmpty()) return {};
    return filesOfAllWere(files.size(), report.files) + u' ' +
           predicateOf(trouble, files.size() == 1) + u": "_qs +
           platform::listedByReason(items, kMostNames) + u'.';
}

QString mishapsOf(const RunReport& report) {
    QStringList sentences;
    for (const Trouble trouble : kTroubles)
        if (const QString sentence = sentenceOf(report, trouble); !sentence.isEmpty())
            sentences << sentence;
    return sentences.join(u' ');
}

// The full path of a source. `inWork`: it has its temporary name at the moment.
QString pathOf(const RunReport& report, const QString& name, bool inWork) {
    return platform::pathIn(report.rawFolder, inWork ? nameInWork(name) : name);
}

QStringList sourcesOf(const RunReport& report, bool inWork) {
    QStringList paths;
    if (inWork) paths << pathOf(report, report.inWork, true);
    for (const Mishap& mishap : report.mishaps)
        if (!inWork || mishap.file != report.inWork) paths << pathOf(report, mishap.file, false);
    paths.removeDuplicates();
    return paths;
}

QString inWorkIsSafe(const RunReport& report) {
    return u"All sources are in Raw_Files; %1 is called %2 there."_qs.arg(
        platform::shownName(report.inWork), platform::shownName(nameInWork(report.inWork)));
}

// A notice about a run that has stopped. `story`: a sentence that says why.
Notice stopped(const RunReport& report, const QString& story, const QString& remedy) {
    QStringList what{story,
                     filesOfAllWere(report.written, report.files) + u" written before that."_qs,
                     mishapsOf(report)};
    what.removeAll(QString());
    return {what.join(u' '), sourcesOf(report, true), inWorkIsSafe(report), remedy};
}

QString cleanUp(const QString& before) {
    return u"Close the window with its close button, which is safe. "_qs + before +
           u"Rename the file back to its own name, copy the files that were not written to a "
           u"new folder, and process that folder."_qs;
}

QString storyOf(const QString& file, Halt halt, const QString& reason) {
    const QString waits = u"The batch run is stuck at %1: "_qs.arg(file);
    switch (halt) {
        case Halt::Load:
            return waits + u"it could not be loaded"_qs + because(reason) + u'.';
        case Halt::Search:
            return waits + u"the search for its silences could not start"_qs + because(reason) +
                   u'.';
        case Halt::Export:
            return waits + u"its output could not be started"_qs + because(reason) + u'.';
        case Halt::Hiss:
            return waits + u"the hiss filter is on, and it never ends."_qs;
        case Halt::NothingToEdit:
            return waits +
                   u"the silence at its end already has the right length, so no step follows."_qs;
        case Halt::Unexpected:
            return waits + u"a step ended that was not expected."_qs;
        case Halt::Round:
            return u"The batch run goes round in circles at %1: after the cut, the silence at "
                   u"its end already has the right length, so the search for it starts again "
                   u"each time."_qs.arg(file);
    }
    return waits;
}

QString remedyOf(Halt halt) {
    switch (halt) {
        case Halt::Load:
            return cleanUp(u"Leave that file out. "_qs);
        case Halt::Export:
            return cleanUp(u"Choose another output format, frequency or bit rate. "_qs);
        case Halt::Hiss:
            return cleanUp(
                u"The filter can only come from the stored settings: put back the delivered "
                u"Tarnwick.mdb, in which it is off. "_qs);
        case Halt::NothingToEdit:
        case Halt::Round:
            return cleanUp(u"Make the silence at the end one millisecond longer. "_qs);
        case Halt::Search:
        case Halt::Unexpected:
            break;
    }
    return cleanUp({});
}

}  // namespace

Notice noticeOfHalt(const RunReport& report, Halt halt, const QString& reason) {
    RunReport others = report;
    others.mishaps.removeIf([&](const Mishap& mishap) {  // the story tells these
        return mishap.file == report.inWork &&
               (mishap.trouble == Trouble::NotWritten || mishap.trouble == Trouble::EndsUnknown);
    });
    return stopped(others, storyOf(platform::shownName(report.inWork), halt, reason),
                   remedyOf(halt));
}

Notice noticeOfClosing(const RunReport& report) {
    return stopped(report, u"The Batch Processor was closed during its run."_qs,
                   u"Rename the file back to its own name, copy the files that were not written "
                   u"to a new folder, and process that folder."_qs);
}

Notice noticeOfOtherFolder(const RunReport& report) {
    return stopped(report,
                   u"Another folder was chosen during the batch run: from now on files are "
                   u"written there, and the remaining files may not be found."_qs,
                   cleanUp({}));
}

std::optional<Notice> noticeOfEnd(const RunReport& report) {
    if (report.mishaps.isEmpty()) return {};
    // If not all files were written, the first sentence of the mishaps counts those that were not.
    const bool all = report.written == report.files;
    const QStringList sources = sourcesOf(report, false);
    return Notice{
        (all ? filesOfAllWere(report.written, report.files) + u" written. "_qs : QString()) +
            mishapsOf(report),
        sources, u"All sources are in Raw_Files."_qs,
        (sources.size() == 1
             ? u"Remove the cause, copy the source of this file to a new folder"_qs
             : u"Remove the cause, copy the sources of these files to a new folder"_qs) +
            u", and process that folder."_qs};
}

}  // namespace tarnwick::batch
