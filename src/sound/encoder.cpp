#include "sound/encoder.h"

#include "sound/sound_error.h"
#include "sound/wav_encoder.h"

namespace tarnwick::sound {

namespace {

bool writableAsPcm(const AudioFormat& format) {
    if (format.floating) return format.bits == 32;
    return format.bits == 8 || format.bits == 16 || format.bits == 24 || format.bits == 32;
}

}  // namespace

std::unique_ptr<Encoder> makeEncoder(const OutputFormat& output, std::int64_t frames,
                                     AtomicFile& file) {
    switch (output.container) {
        case Container::Wav:
            if (!writableAsPcm(output.format)) break;
            return std::make_unique<WavEncoder>(output.format, frames, file);
        case Container::Aiff:
        case Container::Mp3:
        case Container::WavCodec:
            break;
    }
    throw SoundError(SoundFailure::BadFormat, "a container that is not written");
}

}  // namespace tarnwick::sound
