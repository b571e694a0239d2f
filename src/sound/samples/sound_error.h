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
    SoundError(SoundFailure failure, const char* what)
        : std::runtime_error(what), failure_(failure) {}
    SoundFailure failure() const { return failure_; }

  private:
    SoundFailure failure_;
};

}  // namespace tarnwick::sound
