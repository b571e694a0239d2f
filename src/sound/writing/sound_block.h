#pragma once

#include <cstdint>
#include <vector>

namespace tarnwick::sound {

// Frames to be written to a file: either interleaved values in parts of full scale, or the bytes
// exactly as the file will hold them. The other vector is empty.
struct SoundBlock {
    std::vector<double> values;
    std::vector<std::uint8_t> stored;

    void clear() {
        values.clear();
        stored.clear();
    }
};

}  // namespace tarnwick::sound
