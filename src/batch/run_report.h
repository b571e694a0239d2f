#pragma once

#include <QList>
#include <QString>

namespace tarnwick::batch {

// The name of a source while it is being processed.
inline QString nameInWork(const QString& name) { return u"ZZ_TEMP_"_qs + name; }

// What can go wrong with one file of a run that goes on.
enum class Trouble {
    NotWritten,    // its export failed
    Replaced,      // its output took the place of an earlier output of the run
    Empty,         // the cut took all of it
    Uncut,         // the cut is longer than it and was not made
    Inaudible,     // nothing in it is louder than the silence threshold
    EndsUnknown,   // the search for its silences failed
    EditFailed,    // another step failed
    StepsLeftOut,  // written without a step that was asked for
};

struct Mishap {
    Trouble trouble = Trouble::NotWritten;
    QString file;    // bare name of the source
    QString reason;  // in words that continue a sentence; may be empty

    bool operator==(const Mishap&) const = default;
};

// What has become of the files of a run so far. UI thread.
struct RunReport {
    bool underWay = false;
    QString rawFolder;      // full path of the sources
    qsizetype files = 0;    // of the run
    qsizetype written = 0;  // exported, whatever else happened to them
    QString inWork;         // bare name of the current file
    QList<Mishap> mishaps;

    // Of the file in work; each trouble counts once for a file and reason.
    void add(Trouble trouble, const QString& reason = {}) {
        const Mishap mishap{trouble, inWork, reason};
        if (underWay && !mishaps.contains(mishap)) mishaps << mishap;
    }
    bool has(Trouble trouble) const {
        for (const Mishap& mishap : mishaps)
            if (mishap.trouble == trouble && mishap.file == inWork) return true;
        return false;
    }
};

}  // namespace tarnwick::batch
