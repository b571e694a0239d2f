#pragma once

#include <QString>

#include "engine/sound_events.h"

namespace tarnwick::engine {

enum class Operation { Load, Edit, Scan, Export, Play };

// An operation of the sound editor that failed, and why.
struct Failure {
    Operation operation = Operation::Load;
    QString path;  // full path: the target of an export, otherwise the file of the sound
    ErrorCode code = kOk;
    int systemError = 0;  // errno of the system call that failed; 0 if none did

    bool operator==(const Failure&) const = default;
};

// The reason in a few words that continue a sentence: "no space left on the device".
QString reasonOf(const Failure& failure);

}  // namespace tarnwick::engine
