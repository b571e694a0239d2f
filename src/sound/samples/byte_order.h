#pragma once

#include <cstdint>

// Reads integers stored in little-endian or big-endian order.

namespace tarnwick::sound {

inline std::uint16_t little16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}
inline std::uint32_t little32(const std::uint8_t* bytes) {
    return little16(bytes) | std::uint32_t{little16(bytes + 2)} << 16;
}
inline std::uint16_t big16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}
inline std::uint32_t big32(const std::uint8_t* bytes) {
    return std::uint32_t{big16(bytes)} << 16 | big16(bytes + 2);
}

}  // namespace tarnwick::sound
