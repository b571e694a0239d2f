#include "engine/output_format.h"

#include <array>
#include <optional>

#include "sound/samples/time.h"
#include "sound/samples/wav_codecs.h"

namespace tarnwick::engine {

namespace {

using sound::Container;
using sound::OutputFormat;
using Chosen = std::optional<OutputFormat>;  // none for settings that no file can have

struct Depth {
    int bits = 0;  // 0 if the mode has no meaning
    bool floating = false;
};

// Indexed by WavEncodeMode and AiffEncodeMode.
constexpr std::array<Depth, 5> kWavDepths = {
    {{8, false}, {16, false}, {24, false}, {32, false}, {32, true}}};
constexpr std::array<Depth, 6> kAiffDepths = {
    {{8, false}, {}, {16, false}, {24, false}, {32, false}, {32, true}}};

template <std::size_t kModes>
Chosen uncompressed(Container container, const std::array<Depth, kModes>& depths, qint32 mode,
                    qint32 frequencyHz, qint32 channels) {
    if (mode < 0 || mode >= std::ssize(depths)) return {};
    const Depth depth = depths[static_cast<std::size_t>(mode)];
    if (depth.bits == 0) return {};
    if (frequencyHz < sound::kLowestRate || frequencyHz > sound::kHighestRate) return {};
    return OutputFormat{.container = container,
                        .format = {frequencyHz, channels, depth.bits, depth.floating}};
}

Chosen mp3(const Mp3Options& options, qint32 frequencyHz, qint32 channels) {
    if (options.EncodeMode != kMp3ConstantBitRate) return {};
    for (qint32 index = 0; index < options.CBR_GetCount(frequencyHz); ++index)
        if (options.CBR_GetValue(frequencyHz, index) == options.CBR)
            return OutputFormat{.container = Container::Mp3,
                                .format = {frequencyHz, channels, 16, false},
                                .bitRate = static_cast<int>(options.CBR)};
    return {};
}

Chosen wavCodec(const AcmOptions& options) {
    // Before CodecsEnum the count is 0, so no format can be chosen.
    if (options.FormatIndex < 0 ||
        options.FormatIndex >= options.FormatsGetCount(options.CodecIndex))
        return {};
    const qint16 index = options.listedCodec(options.CodecIndex);
    const auto& codec = sound::wavCodecs().at(static_cast<std::size_t>(index));
    return OutputFormat{.container = Container::WavCodec,
                        .format = codec.formats.at(static_cast<std::size_t>(options.FormatIndex)),
                        .codec = index};
}

Chosen chosen(const EncodeFormats& formats, qint32 frequencyHz, qint32 channels) {
    switch (formats.FormatToUse) {
        case kWavContainer:
            return uncompressed(Container::Wav, kWavDepths, formats.WAV.EncodeMode, frequencyHz,
                                channels);
        case kAiffContainer:
            return uncompressed(Container::Aiff, kAiffDepths, formats.AIFF.EncodeMode, frequencyHz,
                                channels);
        case kMp3Container:
            return mp3(formats.MP3, frequencyHz, channels);
        case kAcmContainer:
            return wavCodec(formats.ACM);
        default:
            return {};
    }
}

}  // namespace

ErrorCode outputFormat(const EncodeFormats& formats, qint32 frequencyHz, qint32 channels,
                       sound::OutputFormat& output) {
    const Chosen format = chosen(formats, frequencyHz, channels);
    if (!format || format->format.channels < 1 || format->format.channels > 2) return kBadFormat;
    output = *format;
    return kOk;
}

qint64 bytesOf(const sound::OutputFormat& output, qint64 lengthMs) {
    constexpr qint64 kHeader = 100;
    if (output.container == Container::Mp3) return kHeader + lengthMs * output.bitRate / 8000;
    const qint64 samples = sound::frameFloor(lengthMs, output.format.rate) * output.format.channels;
    // Only GSM has no whole number of bits per sample: 65 bytes hold 320 of them.
    return kHeader +
           (output.format.bits > 0 ? samples * output.format.bits / 8 : samples * 65 / 320);
}

}  // namespace tarnwick::engine
