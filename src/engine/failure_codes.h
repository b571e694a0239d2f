#pragma once

#include <stdexcept>
#include <utility>

#include "engine/sound_events.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::engine {

// A failure that does not come from the sound rooms.
class EditorError : public std::runtime_error {
  public:
    EditorError(ErrorCode code, const char* what) : std::runtime_error(what), code_(code) {}
    ErrorCode code() const { return code_; }

  private:
    ErrorCode code_;
};

ErrorCode codeOf(sound::SoundFailure failure);

// The code of any exception. A cancelled job has one too, but it is never reported.
ErrorCode codeOf(const std::exception& error);

// Why an operation failed; kOk if it did not.
struct Reason {
    ErrorCode code = kOk;
    int systemError = 0;  // errno of the system call that failed; 0 if none did

    bool operator==(ErrorCode other) const { return code == other; }
};

Reason reasonOf(const std::exception& error);

// Runs `work` and converts an exception to its reason.
template <class Work>
Reason attempt(Work&& work) {
    try {
        std::forward<Work>(work)();
        return {};
    } catch (const std::exception& error) {
        return reasonOf(error);
    }
}

}  // namespace tarnwick::engine
