#include "sound/samples/sample_coding.h"

#include <type_traits>

#include "sound/samples/sample_codecs.h"

namespace tarnwick::sound {

namespace {

constexpr double kIntegerScale = 1.0 / 2147483648.0;

}  // namespace

int bytesOf(Coding coding) {
    return withCodec(coding, [](auto codec) { return decltype(codec)::kBytes; });
}

std::optional<std::uint8_t> silentByte(Coding coding) {
    switch (coding) {
        case Coding::Unsigned8:
            return std::uint8_t{0x80};
        case Coding::Signed8:
        case Coding::Little16:
        case Coding::Little24:
        case Coding::Little32:
        case Coding::Big16:
        case Coding::Big24:
        case Coding::Big32:
            return std::uint8_t{0};
        default:
            return {};
    }
}

void unpack(Coding coding, const std::uint8_t* bytes, std::span<double> values) {
    withCodec(coding, [&](auto codec) {
        using Codec = decltype(codec);
        constexpr bool kInteger = std::is_integral_v<decltype(Codec::load(nullptr))>;
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = Codec::load(bytes + i * Codec::kBytes) * (kInteger ? kIntegerScale : 1.0);
    });
}

}  // namespace tarnwick::sound
