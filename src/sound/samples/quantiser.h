#pragma once

#include <cstddef>

#include "sound/samples/audio_format.h"
#include "sound/samples/companding.h"

namespace tarnwick::sound {

// Sample layouts of uncompressed files, which store each sample by itself.
struct SampleLayout {
    int bits = {};  // 8, 16, 24, 32
    bool floating = false;
    bool bigEndian = false;
    bool unsigned8 = true;              // 8 bits with the zero level at 128, as in WAV
    Companding law = Companding::None;  // 8 bits that encode 16

    int bytes() const { return bits / 8; }
};

// Writes `count` values, parts of full scale, as samples. Integers are rounded to nearest and
// clipped, never wrapped. Floating samples are clipped only to the range of a float. NaN becomes 0.
// `out` has room for count * layout.bytes() bytes.
void quantise(const double* values, std::size_t count, const SampleLayout& layout,
              unsigned char* out);

}  // namespace tarnwick::sound
