#include "engine/failure.h"

#include "runtime/system_reason.h"

namespace tarnwick::engine {

namespace {

QString reasonOfCode(ErrorCode code) {
    switch (code) {
        case kOk:
            break;
        case kNoMemory:
            return u"memory or disk space ran out"_qs;
        case kNoSound:
            return u"no sound is loaded"_qs;
        case kFileNotFound:
            return u"the file is not there or cannot be opened"_qs;
        case kNotASound:
            return u"it is not a WAV, AIFF or MP3 file, or there is no sound in it"_qs;
        case kDamaged:
            return u"the file is damaged or cannot be read to its end"_qs;
        case kSourceChanged:
            return u"another program has changed the file of the loaded sound"_qs;
        case kBadRange:
            return u"the times are outside the sound"_qs;
        case kBadFormat:
            return u"this format, rate or number of channels cannot be written"_qs;
        case kWriteFailed:
            return u"the file cannot be written"_qs;
        case kNotSupported:
            return u"this is not possible here"_qs;
        case kPlaybackFailed:
            return u"there is no working sound device"_qs;
    }
    return {};
}

}  // namespace

QString reasonOf(const Failure& failure) {
    const QString system = runtime::systemReason(failure.systemError);
    return system.isEmpty() ? reasonOfCode(failure.code) : system;
}

}  // namespace tarnwick::engine
