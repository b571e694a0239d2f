#pragma once

#include <cstdint>
#include <vector>

namespace tarnwick::sound {

// Frames on their way into a file: either as values, interleaved, in parts of full scale, or as the
// bytes that the file is to have. The other one is empty.
struct SoundBlock {
    std::vector<double> values;
    std::vector<std::uint8_t> stored;

    void clear() {
        values.clear();
        stored.clear();
    }
};

}  // namespace tarnwick::sound
