#pragma once

#include <stdexcept>

namespace tarnwick::sound {

enum class SoundFailure {
    NoSpace,        // memory or disk space ran out
    NotFound,       // the file does not exist or cannot be opened
    NotASound,      // not a sound file of a known kind, or one without sound
    Damaged,        // the file is damaged or cannot be read to its end
    SourceChanged,  // the file was changed in place while it was held open
    BadRange,       // a stretch outside the sound
    BadFormat,      // a format that cannot be written
    WriteFailed,    // the target cannot be created or written
    NoDevice,       // no sound device
    Cancelled,      // the caller asked to stop
};

class SoundError : public std::runtime_error {
  public:
    // `systemError`: errno of the system call that failed; 0 if none did.
    SoundError(SoundFailure failure, const char* what, int systemError = 0)
        : std::runtime_error(what), failure_(failure), systemError_(systemError) {}
    SoundFailure failure() const { return failure_; }
    int systemError() const { return systemError_; }

  private:
    SoundFailure failure_;
    int systemError_;
};

}  // namespace tarnwick::sound
