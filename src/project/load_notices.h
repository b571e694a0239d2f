#pragma once

#include <QString>

#include "engine/failure.h"
#include "platform/notices.h"

// Notices about the recording: its load, its saves and its sound.

namespace tarnwick::project {

// The load command has emptied the list and loaded nothing. `reason` is a whole sentence.
platform::Notice listEmptied(const QString& reason);

// The same if the list was empty before.
platform::Notice nothingLoaded(const QString& reason);

// The tool tips of the empty list after such a command, and after a failed load.
QString rowsCanComeBack();
QString noSoundLoaded();

// The recording was refused, or its load ended without a sound.
platform::Notice notLoaded(const engine::Failure& failure);

// The file ends before the length that its header tells. Lengths in ms.
platform::Notice endsEarly(const QString& path, qint64 toldMs, qint64 heldMs);

// The sheet window was closed without a choice.
// `workbook`: full path. `soundIsLoaded`: there is still the one of a load before.
platform::Notice noSheetChosen(const QString& workbook, bool soundIsLoaded);

// The topic of the notices of saves that fail.
QString saveTopic();

// BU_Source_Files is missing in the project folder and cannot be made. `reason` continues a
// sentence. `fileInTheWay`: a file has that name.
platform::Notice noBackupFolder(const QString& folder, const QString& reason, bool fileInTheWay);

// How the recording lies on the disk. Full paths.
struct RecordingOnDisk {
    QString path;
    QString copy;              // the copy made before the last save; empty before the first save
    bool savedBefore = false;  // a save of the loaded sound has succeeded
};

// A state in words that continue a sentence: "take.wav is on the disk as it was loaded, ...".
QString stateOfFile(const QString& path, bool savedBefore);

// A save failed; the engine has left the file as it was.
platform::Notice notSaved(const RecordingOnDisk& recording, const engine::Failure& failure);

// Another program has changed the file of the loaded sound in place, so its sound is lost.
platform::Notice sourceChanged(const RecordingOnDisk& recording);

// Playing continues, but cannot be heard.
platform::Notice playsInSilence();

// A file was not written, and its sound has been closed since.
platform::Notice lateFileNotWritten(const engine::Failure& failure);

}  // namespace tarnwick::project
