#pragma once

#include <QList>
#include <QString>

namespace tarnwick::batch {

// The name of a source while it is being processed.
inline QString nameInWork(const QString& name) { return u"ZZ_TEMP_"_qs + name; }

// What can go wrong with one file while the run continues.
enum class Trouble {
    NotWritten,    // its export failed
    Replaced,      // its output replaced an earlier output of the same run
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
    QList<Mishap> mishaps;

    // Adds a mishap of the file in work. The same trouble with the same reason is added only once.
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
