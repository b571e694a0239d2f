#pragma once

#include <QtGlobal>

namespace tarnwick::model {

// One silence of the last scan, in milliseconds from the start of the sound.
struct SilenceRecord {
    qint32 Nber = 0;  // never set in the array: the index is the number
    qint32 StartAt = 0;
    qint32 FinishAt = 0;
};

}  // namespace tarnwick::model
