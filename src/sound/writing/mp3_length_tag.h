#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace tarnwick::sound {

// What decoders need to give exactly the frames that went into an MP3.
struct Mp3Length {
    std::int64_t mp3Frames = 0;  // those that hold sound
    std::int64_t bytes = 0;      // of the whole file
    int delay = 0;               // frames that the encoder puts before the sound, at most 4095
    int padding = 0;             // and behind it, at most 4095
    int bitRate = 0;             // bits per second
    int lowpass = 0;             // highest frequency kept, in Hz
};

// The first MP3 frame of a file may hold no sound but its length, an "Info" tag. LAME makes it with
// a seek table, for which a frame has no room at lower bit rates; there it is made here, without
// one. (Laid out as in "Mp3 Info Tag revision 1", by the makers of LAME.)

enum class Mp3LengthTag { None, Here, ByLame };

// Who makes the tag for rates in Hz and bits per second. There is none at 8 kbit/s, and up to
// 24 kbit/s at some rates.
Mp3LengthTag mp3LengthTagFor(int rate, int channels, int bitRate);

// Bytes of a frame without padding.
std::size_t mp3FrameBytes(int rate, int bitRate);

// `header` is that of any other frame of the file, `bytes` the size of a frame.
std::vector<unsigned char> mp3LengthTag(const std::array<unsigned char, 4>& header,
                                        std::size_t bytes, const Mp3Length& length);

}  // namespace tarnwick::sound
