#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace tarnwick::sound {

// What decoders need to return exactly the frames that were encoded.
struct Mp3Length {
    std::int64_t mp3Frames{};  // those that hold sound
    std::int64_t bytes{};      // of the whole file
    int delay{};               // frames that the encoder adds before the sound, at most 4095
    int padding{};             // and after it, at most 4095
    int bitRate{};             // bits per second
    int lowpass{};             // highest frequency kept, in Hz
};

// Instead of sound the first MP3 frame of a file may hold its length, as an "Info" tag. LAME writes
// it with a seek table. At lower bit rates a frame has no room for that, so we write the tag here
// without one. (Layout from "Mp3 Info Tag revision 1", by the makers of LAME.)

enum class Mp3LengthTag { None, Here, ByLame };

// Who writes the tag; rates are in Hz and bits per second. There is none at 8 kbit/s and, at some
// rates, up to 24 kbit/s.
Mp3LengthTag mp3LengthTagFor(int rate, int channels, int bitRate);

// Bytes of a frame without padding.
std::size_t mp3FrameBytes(int rate, int bitRate);

// Builds the tag frame. `header` is that of any other frame of the file, `bytes` the size of a
// frame.
std::vector<unsigned char> mp3LengthTag(const std::array<unsigned char, 4>& header,
                                        std::size_t bytes, const Mp3Length& length);

}  // namespace tarnwick::sound
