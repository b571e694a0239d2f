#include "engine/failure_codes.h"

#include <new>
#include <system_error>

namespace tarnwick::engine {

ErrorCode codeOf(sound::SoundFailure failure) {
    using enum sound::SoundFailure;
    switch (failure) {
        case NoSpace:
            return kNoMemory;
        case NotFound:
            return kFileNotFound;
        case NotASound:
            return kNotASound;
        case Damaged:
            return kDamaged;
        case SourceChanged:
            return kSourceChanged;
        case BadRange:
            return kBadRange;
        case BadFormat:
            return kBadFormat;
        case WriteFailed:
            return kWriteFailed;
        case NoDevice:
            return kPlaybackFailed;
        case Cancelled:
            break;
    }
    return kNotSupported;
}

ErrorCode codeOf(const std::exception& error) {
    if (const auto* failure = dynamic_cast<const sound::SoundError*>(&error))
        return codeOf(failure->failure());
    if (const auto* failure = dynamic_cast<const EditorError*>(&error)) return failure->code();
    // Both mean that something too large for the memory was requested.
    if (dynamic_cast<const std::bad_alloc*>(&error) ||
        dynamic_cast<const std::length_error*>(&error))
        return kNoMemory;
    // No thread could be started: the system ran out of room for it, and no file is to blame.
    const auto* system = dynamic_cast<const std::system_error*>(&error);
    if (system != nullptr && system->code() == std::errc::resource_unavailable_try_again)
        return kNoMemory;
    return kDamaged;
}

Reason reasonOf(const std::exception& error) {
    const auto* sound = dynamic_cast<const sound::SoundError*>(&error);
    return {codeOf(error), sound != nullptr ? sound->systemError() : 0};
}

}  // namespace tarnwick::engine
