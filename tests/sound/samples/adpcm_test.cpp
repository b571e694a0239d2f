#include "sound/samples/adpcm.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <span>
#include <vector>

#include "sound/samples/byte_order.h"
#include "support/by_sndfile.h"
#include "support/test_sounds.h"

namespace tarnwick::sound {
namespace {

// Writes a WAV with a block codec through an independent library. Its noise rises from the faintest
// to full scale again and again, so that steps of all sizes are taken.
void writeBySndfile(const std::filesystem::path& path, int codec, int channels) {
    SF_INFO info = {};
    info.samplerate = 8000;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | codec;
    const NoiseSound noise({8000, channels, 16, false}, 5000);
    std::vector<double> samples = samplesOf(noise);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] *= std::exp2(static_cast<double>(i % 700) / 700 * 15 - 15);
    SNDFILE* const file = sf_open(path.c_str(), SFM_WRITE, &info);
    sf_writef_double(file, samples.data(), noise.frames());
    sf_close(file);
}

std::vector<std::int16_t> decoded(int codec, std::span<const std::uint8_t> block, int channels) {
    const bool ima = codec == SF_FORMAT_IMA_ADPCM;
    const auto bytes = static_cast<std::int64_t>(block.size());
    const std::int64_t frames = ima ? imaFrames(bytes, channels) : microsoftFrames(bytes, channels);
    std::vector<std::int16_t> samples(static_cast<std::size_t>(frames * channels));
    if (ima)
        decodeImaBlock(block, channels, samples.data());
    else
        decodeMicrosoftBlock(block, channels, kStandardWeights, samples.data());
    return samples;
}

TEST(Adpcm, BlocksMatchAnotherDecoder) {
    const TempFolder folder;
    const auto path = folder.path() / "blocks.wav";
    for (const int codec : {SF_FORMAT_IMA_ADPCM, SF_FORMAT_MS_ADPCM})
        for (const int channels : {1, 2}) {
            SCOPED_TRACE(testing::Message() << codec << ", " << channels << " channels");
            writeBySndfile(path, codec, channels);
            std::string file = contentOf(path);
            const std::span bytes(reinterpret_cast<std::uint8_t*>(file.data()), file.size());
            const std::size_t format = file.find("fmt ") + 8;
            const std::size_t size = little16(&bytes[format + 12]);    // of a block
            const std::size_t stated = little16(&bytes[format + 18]);  // frames in a block
            const auto blocks = bytes.subspan(file.find("data") + 8);
            const std::size_t count = blocks.size() / size;
            ASSERT_GT(count, std::size(kStandardWeights));
            // Every block predicts in another way, whatever the encoder had chosen.
            for (std::size_t i = 0; codec == SF_FORMAT_MS_ADPCM && i < count; ++i)
                for (int channel = 0; channel < channels; ++channel)
                    blocks[i * size + channel] = static_cast<std::uint8_t>((i + channel) % 7);
            std::ofstream(path, std::ios::binary) << file;
            SF_INFO info;
            const std::vector<double> wanted = bySndfile(path, info);
            std::vector<double> values;
            for (std::size_t i = 0; i < count; ++i) {
                const bool last = i + 1 == count;  // it is truncated
                const auto block = blocks.subspan(i * size, last ? size - 21 : size);
                for (const auto sample : decoded(codec, block, channels))
                    values.push_back(sample / 32768.0);
                ASSERT_EQ(values.size() % (stated * channels) == 0, !last);
            }
            ASSERT_LE(values.size(), wanted.size());
            EXPECT_TRUE(std::equal(values.begin(), values.end(), wanted.begin()));
        }
}

TEST(Adpcm, ShortBlocksAndImpossibleStatesDecodeToo) {
    for (const auto& [bytes, channels, ima, microsoft] :
         {std::array{3, 1, 0, 0}, {4, 1, 1, 0}, {7, 1, 1, 2}, {7, 2, 0, 0}, {15, 2, 1, 3}}) {
        EXPECT_EQ(imaFrames(bytes, channels), ima) << bytes;
        EXPECT_EQ(microsoftFrames(bytes, channels), microsoft) << bytes;
    }
    const auto with = [](int codec, std::size_t at, int value) {
        std::vector<std::uint8_t> block(40, 0x90);
        block[at] = static_cast<std::uint8_t>(value);
        return decoded(codec, block, 1);
    };
    for (const int index : {89, 200, 255})
        EXPECT_EQ(with(SF_FORMAT_IMA_ADPCM, 2, index), with(SF_FORMAT_IMA_ADPCM, 2, 88)) << index;
    for (const int weights : {7, 8, 255})
        EXPECT_EQ(with(SF_FORMAT_MS_ADPCM, 0, weights), with(SF_FORMAT_MS_ADPCM, 0, 0)) << weights;
}

}  // namespace
}  // namespace tarnwick::sound
