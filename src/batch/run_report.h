#pragma once

#include <QHash>
#include <QList>
#include <QStringList>
#include <utility>

#include "platform/notice_words.h"

namespace tarnwick::batch {

// The name of a source while it is being processed.
inline QString nameInWork(const QString& name) { return u"ZZ_TEMP_"_qs + name; }

// What can go wrong with one file while the run continues.
enum class Trouble {
    NotWritten,    // its export failed
    Replaced,      // its output was replaced by a later output of the same run
    Empty,         // the cut is as long as the file or longer
    Uncut,         // the cut at the end is longer than the file and was not made
    Inaudible,     // nothing in it is louder than the silence threshold
    EndsUnknown,   // the search for its silences failed
    EditFailed,    // another step failed
    StepsLeftOut,  // it was written without a requested step
};

struct Mishap {
    Trouble trouble = Trouble::NotWritten;
    QString file;    // bare name of the source
    QString reason;  // words that continue a sentence; may be empty

    bool operator==(const Mishap&) const = default;
};

// What has happened to the files of a run so far. UI thread.
struct RunReport {
    bool underWay = false;
    QString rawFolder;      // full path of the sources
    qsizetype files = 0;    // of the run
    qsizetype written = 0;  // exported, with or without mishaps
    QString inWork;         // bare name of the current file
    QString output;         // bare name of its output, once it has one
    QList<Mishap> mishaps;
    QHash<QString, QStringList> writers;  // the sources of each output, in the order of the run

    // Adds a mishap of the file in work. The same trouble with the same reason is added only once.
    void add(Trouble trouble, const QString& reason = {}) {
        const Mishap mishap{trouble, inWork, reason};
        if (underWay && !mishaps.contains(mishap)) mishaps << mishap;
    }
    // The output of the file in work was written. Each source that wrote it before has lost its
    // output.
    void wrote() {
        ++written;
        if (output.isEmpty()) return;
        QStringList& sources = writers[output];
        mishaps.removeIf([&](const Mishap& mishap) {
            return mishap.trouble == Trouble::Replaced && sources.contains(mishap.file);
        });
        for (const QString& lost : std::as_const(sources))
            mishaps << Mishap{
                Trouble::Replaced, lost,
                u"the output on the disk is the one of "_qs + platform::shownName(inWork)};
        sources << inWork;
    }
    bool has(Trouble trouble) const {
        for (const Mishap& mishap : mishaps)
            if (mishap.trouble == trouble && mishap.file == inWork) return true;
        return false;
    }
};

}  // namespace tarnwick::batch
