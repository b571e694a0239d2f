#pragma once

#include <sndfile.h>

#include <filesystem>
#include <vector>

namespace tarnwick::sound {

// Reads a file with an independent library. A double can hold samples of any coding exactly.
inline std::vector<double> bySndfile(const std::filesystem::path& file, SF_INFO& info) {
    info = {};
    SNDFILE* in = sf_open(file.c_str(), SFM_READ, &info);
    if (!in) return {};
    std::vector<double> samples(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_double(in, samples.data(), info.frames);
    sf_close(in);
    return samples;
}

}  // namespace tarnwick::sound
