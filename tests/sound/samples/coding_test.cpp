#include "sound/samples/sample_coding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>
#include <vector>

#include "sound/samples/byte_order.h"
#include "sound/samples/quantiser.h"
#include "sound/samples/wav_codecs.h"
#include "support/test_sounds.h"

namespace tarnwick::sound {
namespace {

using testing::Each;
using testing::ElementsAre;

std::vector<double> unpacked(Coding coding, const std::string& bytes) {
    std::vector<double> values(bytes.size() / static_cast<std::size_t>(bytesOf(coding)));
    unpack(coding, reinterpret_cast<const std::uint8_t*>(bytes.data()), values);
    return values;
}

TEST(SampleCoding, UnpacksEverySampleExactly) {
    struct Case {
        Coding coding;
        std::string bytes;
        std::vector<double> values;
    };
    constexpr bool kBig = true;
    constexpr double kLargest = std::numeric_limits<float>::max();
    constexpr double kUnit24 = 1 / 8388608.0;
    constexpr double kUnit32 = 1 / 2147483648.0;
    const Case cases[] = {
        {Coding::Unsigned8, "\x01\xC0", {-127 / 128.0, 0.5}},
        {Coding::Signed8, "\x40\x80\x01", {0.5, -1, 1 / 128.0}},
        {Coding::ALaw, "\xD5\x2A\x55", {8 / 32768.0, -32256 / 32768.0, -8 / 32768.0}},
        {Coding::MuLaw, "\xFF\x80\x10", {0, 32124 / 32768.0, -15996 / 32768.0}},
        {Coding::Little16, number(0x4000, 2) + number(0x8001, 2), {0.5, -32767 / 32768.0}},
        {Coding::Big16, number(0x8001, 2, kBig), {-32767 / 32768.0}},
        {Coding::Little24,
         number(0x123456, 3) + number(0xFFFFFF, 3),
         {0x123456 * kUnit24, -kUnit24}},
        {Coding::Big24, number(0x123456, 3, kBig), {0x123456 * kUnit24}},
        {Coding::Little32, number(1, 4) + number(1u << 31, 4), {kUnit32, -1}},
        {Coding::Big32, number(0x12345678, 4, kBig), {0x12345678 * kUnit32}},
        {Coding::LittleFloat32,
         number(0x7F7FFFFF, 4) + number(0x7FC00000, 4),
         {kLargest, 0}},  // a NaN
        {Coding::BigFloat32, number(0xBF000000, 4, kBig), {-0.5}},
        {Coding::LittleFloat64,  // the second is too large for a float
         number(0xC7EFFFFFE0000000, 8) + number(0x7FE0000000000000, 8),
         {-kLargest, 0}},
        {Coding::BigFloat64, number(0xBFD0000000000000, 8, kBig), {-0.25}}};
    for (const auto& [coding, bytes, values] : cases)
        EXPECT_EQ(unpacked(coding, bytes), values) << static_cast<int>(coding);
}

TEST(SampleCoding, MatchesTheQuantiser) {
    const std::pair<Coding, SampleLayout> layouts[] = {
        {Coding::Unsigned8, {.bits = 8}},
        {Coding::Signed8, {.bits = 8, .unsigned8 = false}},
        {Coding::ALaw, {.bits = 8, .law = Companding::ALaw}},
        {Coding::MuLaw, {.bits = 8, .law = Companding::MuLaw}},
        {Coding::Little16, {.bits = 16}},
        {Coding::Big16, {.bits = 16, .bigEndian = true}},
        {Coding::Little24, {.bits = 24}},
        {Coding::Big24, {.bits = 24, .bigEndian = true}},
        {Coding::Little32, {.bits = 32}},
        {Coding::Big32, {.bits = 32, .bigEndian = true}},
        {Coding::LittleFloat32, {.bits = 32, .floating = true}},
        {Coding::BigFloat32, {.bits = 32, .floating = true, .bigEndian = true}}};
    std::string noise;  // every four bytes are a valid float in either byte order
    for (int i = 0; i < 1232; ++i)
        noise += static_cast<char>(i % 4 == 0 || i % 4 == 3 ? i % 0x70 : i * 37);
    for (int code = 0; code < 0x100; ++code)
        noise += number(static_cast<std::uint64_t>(code), 1) + std::string(3, '\0');
    for (const auto& [coding, layout] : layouts) {
        SCOPED_TRACE(static_cast<int>(coding));
        std::string bytes = noise;
        if (coding == Coding::MuLaw)  // it has two zeros
            std::replace(bytes.begin(), bytes.end(), '\x7F', '\xFF');
        const std::vector<double> values = unpacked(coding, bytes);
        std::string written(bytes.size(), 'x');
        quantise(values.data(), values.size(), layout,
                 reinterpret_cast<unsigned char*>(written.data()));
        EXPECT_TRUE(written == bytes);
        const auto silent = static_cast<char>(silentByte(coding).value_or(0));
        if (silentByte(coding)) {
            EXPECT_THAT(unpacked(coding, std::string(24, silent)), Each(0.0));
        }
    }
}

TEST(Quantiser, RoundsToTheNearestAndClips) {
    const double step = std::ldexp(1.0, -15);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<std::pair<double, int>> cases{
        {0.0, 0},        {0.49 * step, 0}, {0.51 * step, 1},   {-0.51 * step, -1},
        {1.5 * step, 2}, {2.5 * step, 2},  {1.0, 32767},       {32767.4 * step, 32767},
        {-1.0, -32768},  {7.0, 32767},     {-1.0e300, -32768}, {nan, 0}};
    for (const auto& [value, sample] : cases) {
        std::int16_t out;
        quantise(&value, 1, {.bits = 16}, reinterpret_cast<unsigned char*>(&out));
        EXPECT_EQ(out, sample) << value;
    }
    constexpr float kLargest = std::numeric_limits<float>::max();
    for (const auto& [value, sample] :
         {std::pair(nan, 0.0f), {1e300, kLargest}, {-1e300, -kLargest}, {1.5, 1.5f}}) {
        float out;
        quantise(&value, 1, {.bits = 32, .floating = true}, reinterpret_cast<unsigned char*>(&out));
        EXPECT_EQ(out, sample) << value;
    }
    EXPECT_EQ(toMuLaw(32767) << 8 | toMuLaw(-32768), 0x8000);
    EXPECT_EQ(toMuLaw(3) << 8 | toMuLaw(4), 0xFFFE);
    EXPECT_EQ(toALaw(32767) << 8 | toALaw(-32768), 0xAA2A);
    EXPECT_EQ(toALaw(-16) << 8 | toALaw(-17), 0x5554);
    const double value = std::ldexp(0x123456, -23);
    unsigned char out[4] = {};
    quantise(&value, 1, {.bits = 24, .bigEndian = true}, out);
    EXPECT_THAT(out, ElementsAre(0x12, 0x34, 0x56, 0));  // nothing is written after the sample
}

TEST(ByteOrder, PutsEveryByteInItsPlace) {
    const std::uint8_t bytes[] = {0x81, 0x92, 0xA3, 0xB4};
    EXPECT_EQ(little16(bytes), 0x9281u);
    EXPECT_EQ(little32(bytes), 0xB4A39281u);
    EXPECT_EQ(big16(bytes), 0x8192u);
    EXPECT_EQ(big32(bytes), 0x8192A3B4u);
}

TEST(WavCodecs, HaveTheUsualRates) {
    std::set<int> usual;  // the whole rates, their halves and their quarters
    for (const int whole : {32000, 44100, 48000})
        usual.insert({whole, whole / 2, whole / 4});
    std::string all;
    for (const auto& [name, formats] : wavCodecs()) {
        std::set<int> rates, bits;
        for (const AudioFormat& format : formats) {
            rates.insert(format.rate);
            bits.insert(format.bits);
        }
        EXPECT_EQ(rates,
                  formats.back().channels == 2 ? usual : std::set({8000, 11025, 22050, 44100}));
        EXPECT_EQ(formats.size(), rates.size() * bits.size() * formats.back().channels) << name;
        for (const int each : bits)
            all += name + (' ' + std::to_string(each)) + '\n';
    }
    EXPECT_EQ(all,
              "PCM 8\nPCM 16\nPCM 24\nA-law 8\nmu-law 8\nIMA ADPCM 4\nMicrosoft ADPCM 4\n"
              "GSM 6.10 0\n");
}

}  // namespace
}  // namespace tarnwick::sound
