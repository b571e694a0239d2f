#include "sound/samples/peaks.h"

#include <algorithm>

namespace tarnwick::sound {

Peaks::Peaks(int channels, std::int64_t frames) : channels_(channels) {
    auto size = static_cast<std::size_t>((frames + kFinestFrames - 1) / kFinestFrames);
    while (true) {
        sizes_.push_back(size);
        offsets_.push_back(perChannel_);
        perChannel_ += size;
        if (size <= 1) break;
        size = (size + kStep - 1) / kStep;
    }
    all_.resize(perChannel_ * static_cast<std::size_t>(channels));
}

std::size_t Peaks::place(int channel, int level) const {
    return static_cast<std::size_t>(channel) * perChannel_ +
           offsets_[static_cast<std::size_t>(level)];
}

std::span<const Peak> Peaks::level(int channel, int level) const {
    return std::span(all_).subspan(place(channel, level), sizes_[static_cast<std::size_t>(level)]);
}

std::span<Peak> Peaks::finest(int channel) {
    return std::span(all_).subspan(place(channel, 0), sizes_[0]);
}

void Peaks::makeCoarser() {
    for (int channel = 0; channel < channels_; ++channel)
        for (int made = 1; made < levels(); ++made) {
            const std::span<const Peak> finer = level(channel, made - 1);
            Peak* coarser = all_.data() + place(channel, made);
            for (std::size_t first = 0; first < finer.size(); first += kStep) {
                Peak peak = finer[first];
                const std::size_t end = std::min(first + kStep, finer.size());
                for (std::size_t i = first + 1; i < end; ++i) {
                    peak.minimum = std::min(peak.minimum, finer[i].minimum);
                    peak.maximum = std::max(peak.maximum, finer[i].maximum);
                }
                *coarser++ = peak;
            }
        }
}

}  // namespace tarnwick::sound
