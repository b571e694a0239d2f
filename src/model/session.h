#pragma once

#include <QString>

namespace tarnwick::model {

// Values of Session::vsLoadStage.
inline constexpr char16_t kInitialLoad[] = u"Initial Load";
inline constexpr char16_t kStartSilenceAdded[] = u"Start Silence Added";
inline constexpr char16_t kEndSilenceAdded[] = u"End Silence Added";

// What the subjects of the main window hand to one another about the sound at work.
struct Session {
    QString vsWorkingFile;         // name of the chosen recording, without the folder
    QString loadedFolder;          // folder and name of the recording whose sound is loaded: a load
    QString loadedFile;            // that was given up may have left another in vsWorkingFile
    QString loadedScript;          // vsScriptFile as it was then, also one left over from before
    QString vsScriptFile;          // name of the workbook, without the folder
    QString vsWordFile;            // the same of the Word document
    QString vsLoadStage;           // how far the load's chain has come; empty before the first load
    qint32 vlSavedRangeBegin = 0;  // visible range to come back to, in ms;
    qint32 vlSavedRangeEnd = 0;    // equal values: none is saved
    qint16 viCurrentRow = 1;       // row of the list that was clicked last, from 1
};

}  // namespace tarnwick::model
