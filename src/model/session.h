#pragma once

#include <QString>

namespace tarnwick::model {

// Values of Session::vsLoadStage.
inline constexpr char16_t kInitialLoad[] = u"Initial Load";
inline constexpr char16_t kStartSilenceAdded[] = u"Start Silence Added";
inline constexpr char16_t kEndSilenceAdded[] = u"End Silence Added";

// What is known of the recording's file on the disk.
struct RecordingState {
    QString goodCopy = {};  // full path of the newest copy made before `damaged`; empty if none
    bool damaged = false;   // another program has changed or replaced the file
    bool unsaved = false;   // the sound has edits that are in no file
};

// State of the loaded sound that the classes behind the main window share.
struct Session {
    QString vsWorkingFile;         // name of the chosen recording, without the folder
    QString loadedFolder;          // folder and name of the recording whose sound is loaded;
    QString loadedFile;            // vsWorkingFile differs after a load that was given up
    QString loadedScript;          // vsScriptFile at that load, even if left over from before
    bool scriptWasThere{};         // loadedScript was in loadedFolder then
    RecordingState recording;      // of loadedFile
    QString vsScriptFile;          // name of the workbook, without the folder
    QString vsWordFile;            // name of the Word document, without the folder
    QString vsLoadStage;           // how far the load chain has come; empty before the first load
    qint32 vlSavedRangeBegin = 0;  // visible range to restore, in ms;
    qint32 vlSavedRangeEnd = 0;    // equal values: none is saved
    qint16 viCurrentRow = 1;       // last clicked row of the list, from 1
};

}  // namespace tarnwick::model
