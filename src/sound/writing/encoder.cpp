#include "sound/writing/encoder.h"

#include <algorithm>

#include "sound/samples/sound_error.h"
#include "sound/samples/wav_codecs.h"
#include "sound/writing/block_encoder.h"
#include "sound/writing/header_writer.h"
#include "sound/writing/microsoft_encoder.h"
#include "sound/writing/mp3_encoder.h"
#include "sound/writing/pcm_encoder.h"

namespace tarnwick::sound {

namespace {

[[noreturn]] void refuse() {
    throw SoundError(SoundFailure::BadFormat, "a format that is not written");
}

void checkPcm(const AudioFormat& format) {
    const bool depth = format.bits == 8 || format.bits == 16 || format.bits == 24;
    if (format.bits != 32 && (format.floating || !depth)) refuse();
}

std::unique_ptr<Encoder> makeWav(const AudioFormat& format, Companding law, std::int64_t frames,
                                 AtomicFile& file) {
    const SampleLayout layout{.bits = format.bits, .floating = format.floating, .law = law};
    return std::make_unique<PcmEncoder>(wavHeader(format, frames, law), layout, format.channels,
                                        file);
}

std::unique_ptr<Encoder> makeAiff(const AudioFormat& format, std::int64_t frames,
                                  AtomicFile& file) {
    const SampleLayout layout{
        .bits = format.bits, .floating = format.floating, .bigEndian = true, .unsigned8 = false};
    return std::make_unique<PcmEncoder>(aiffHeader(format, frames), layout, format.channels, file);
}

std::unique_ptr<Encoder> makeWavCodec(const OutputFormat& output, std::int64_t frames,
                                      AtomicFile& file) {
    const auto& codecs = wavCodecs();
    if (output.codec < 0 || output.codec >= std::ssize(codecs)) refuse();
    const auto& formats = codecs[static_cast<std::size_t>(output.codec)].formats;
    if (std::find(formats.begin(), formats.end(), output.format) == formats.end()) refuse();
    const auto codec = static_cast<WavCodec>(output.codec);
    switch (codec) {
        case kPcmCodec:
            return makeWav(output.format, Companding::None, frames, file);
        case kALawCodec:
            return makeWav(output.format, Companding::ALaw, frames, file);
        case kMuLawCodec:
            return makeWav(output.format, Companding::MuLaw, frames, file);
        case kMsAdpcm:
            return std::make_unique<MicrosoftEncoder>(output.format, frames, file);
        case kImaAdpcm:
        case kGsm610:
            return std::make_unique<BlockEncoder>(codec, output.format, frames, file);
    }
    refuse();
}

}  // namespace

std::unique_ptr<Encoder> makeEncoder(const OutputFormat& output, std::int64_t frames,
                                     AtomicFile& file) {
    const AudioFormat& format = output.format;
    switch (output.container) {
        case Container::Wav:
            checkPcm(format);
            return makeWav(format, Companding::None, frames, file);
        case Container::Aiff:
            checkPcm(format);
            return makeAiff(format, frames, file);
        case Container::Mp3:
            return std::make_unique<Mp3Encoder>(format.rate, format.channels, output.bitRate, file);
        case Container::WavCodec:
            return makeWavCodec(output, frames, file);
    }
    refuse();
}

}  // namespace tarnwick::sound
