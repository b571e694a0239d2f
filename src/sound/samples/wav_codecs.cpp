#include "sound/samples/wav_codecs.h"

namespace tarnwick::sound {

namespace {

std::vector<AudioFormat> formatsOf(const std::vector<int>& rates, const std::vector<int>& bits,
                                   int mostChannels) {
    std::vector<AudioFormat> formats;
    for (const int rate : rates)
        for (const int each : bits)
            for (int channels = 1; channels <= mostChannels; ++channels)
                formats.push_back({rate, channels, each, false});
    return formats;
}

}  // namespace

const std::vector<WavCodecInfo>& wavCodecs() {
    static const std::vector<int> rates = {8000,  11025, 12000, 16000, 22050,
                                           24000, 32000, 44100, 48000};
    static const std::vector<WavCodecInfo> codecs = {
        {"PCM", formatsOf(rates, {8, 16, 24}, 2)},
        {"A-law", formatsOf(rates, {8}, 2)},
        {"mu-law", formatsOf(rates, {8}, 2)},
        {"IMA ADPCM", formatsOf(rates, {4}, 2)},
        {"Microsoft ADPCM", formatsOf(rates, {4}, 2)},
        {"GSM 6.10", formatsOf({8000, 11025, 22050, 44100}, {0}, 1)}};
    return codecs;
}

}  // namespace tarnwick::sound
