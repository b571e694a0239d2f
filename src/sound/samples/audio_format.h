#pragma once

namespace tarnwick::sound {

// How the samples of a sound are kept.
struct AudioFormat {
    int rate = 0;           // frames per second
    int channels = 0;       // 1 or 2
    int bits = 0;           // 8, 16, 24 or 32 per sample
    bool floating = false;  // 32-bit floating point instead of integers

    friend bool operator==(const AudioFormat&, const AudioFormat&) = default;
};

}  // namespace tarnwick::sound
