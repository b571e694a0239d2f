#pragma once

#include <array>
#include <cstddef>
#include <cstring>

namespace tarnwick::engine {

// The record that GetSettings fills and SetSettings applies: 100 bytes that callers read, change in
// place and write back. Only the fields below have a meaning.
class WaveformSettings {
  public:
    static constexpr std::size_t kSize = 100;
    static constexpr std::size_t kHideRuler = 50;   // 1 byte: 0 shows a time ruler under the wave
    static constexpr std::size_t kHideLevels = 51;  // 1 byte: 0 shows a level scale beside it
    static constexpr std::size_t kVerticalScale = 76;  // 4-byte float: 1.0 draws full scale

    unsigned char byteAt(std::size_t offset) const { return bytes_.at(offset); }
    void setByteAt(std::size_t offset, unsigned char value) { bytes_.at(offset) = value; }

    float verticalScale() const {
        float value;
        std::memcpy(&value, bytes_.data() + kVerticalScale, sizeof value);
        return value;
    }
    void setVerticalScale(float value) {
        std::memcpy(bytes_.data() + kVerticalScale, &value, sizeof value);
    }

  private:
    std::array<unsigned char, kSize> bytes_{};
};

}  // namespace tarnwick::engine
