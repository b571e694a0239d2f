#include "engine/output_format.h"

#include <array>

namespace tarnwick::engine {

namespace {

struct Depth {
    int bits;
    bool floating;
};

// By WavEncodeMode.
constexpr std::array kWavDepths{Depth{8, false}, Depth{16, false}, Depth{24, false},
                                Depth{32, false}, Depth{32, true}};

}  // namespace

ErrorCode outputFormat(const EncodeFormats& formats, qint32 frequencyHz, qint32 channels,
                       sound::OutputFormat& output) {
    switch (formats.FormatToUse) {
        case kWavContainer:
            break;
        case kMp3Container:
        case kAcmContainer:
        case kAiffContainer:
            return kNotSupported;
        default:
            return kBadFormat;
    }
    const qint32 mode = formats.WAV.EncodeMode;
    if (mode < kWav8 || mode > kWavFloat) return kBadFormat;
    if (frequencyHz < sound::kLowestRate || frequencyHz > sound::kHighestRate) return kBadFormat;
    if (channels != 1 && channels != 2) return kBadFormat;
    const Depth depth = kWavDepths[static_cast<std::size_t>(mode)];
    output.container = sound::Container::Wav;
    output.format = {frequencyHz, channels, depth.bits, depth.floating};
    return kOk;
}

}  // namespace tarnwick::engine
