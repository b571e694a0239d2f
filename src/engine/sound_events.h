#pragma once

#include <QtGlobal>

// Codes used by the sound editor.

namespace tarnwick::engine {

// First argument of SoundEditDone: which edit ended.
enum EditCommand : qint16 {
    kDeleteRange = 1,
    kInsertSilence = 2,
    kApplyVolume = 3,
    kUndo = 4,
    kRemoveSilence = 14,
    kNormalize = 19,
};

// First argument of WaveMouseNotification. Kind 3 asks for the selection to be cleared.
enum MouseNotification : qint16 { kMouseClearsSelection = 3 };

// Results of operations and values of LastError. 0 is success, every other value a failure.
enum ErrorCode : qint32 {
    kOk = 0,                // no error
    kNoMemory = -2,         // memory or disk space ran out
    kNoSound = -3,          // no sound is loaded
    kFileNotFound = -4,     // the file does not exist or cannot be opened for reading
    kNotASound = -5,        // the file is not a sound file of a known kind, or holds no sound
    kDamaged = -6,          // the sound file is damaged or cannot be read to its end
    kSourceChanged = -7,    // another program changed the loaded file in place
    kBadRange = -8,         // a position or length is negative, reversed or too large
    kBadFormat = -9,        // the output format, rate or channel count is not supported
    kWriteFailed = -10,     // the output file cannot be created or written
    kNotSupported = -11,    // the operation is not available in this editor
    kPlaybackFailed = -12,  // the sound device failed
};

}  // namespace tarnwick::engine
