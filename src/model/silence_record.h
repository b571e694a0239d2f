#pragma once

#include <QtGlobal>

namespace tarnwick::model {

// One silence of the last scan, in milliseconds from the start of the sound.
struct SilenceRecord {
    qint32 Nber{};  // never set in the array: the index is the number
    qint32 StartAt{};
    qint32 FinishAt{};
};

}  // namespace tarnwick::model
