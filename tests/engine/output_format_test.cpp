#include "engine/output_format.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <cmath>
#include <sstream>

#include "engine/encoder_lists.h"

namespace tarnwick::engine {
namespace {

class OutputFormats : public testing::Test {
  protected:
    // "container rate channels bits bit-rate codec", or the code of the refusal.
    std::string chosen(qint32 frequencyHz, qint32 channels) const {
        sound::OutputFormat output;
        const ErrorCode code = outputFormat(formats, frequencyHz, channels, output);
        if (code != kOk) return std::to_string(code);
        std::ostringstream line;
        line << static_cast<int>(output.container) << ' ' << output.format.rate << ' '
             << output.format.channels << (output.format.floating ? " f" : " ")
             << output.format.bits << ' ' << output.bitRate << ' ' << output.codec;
        return line.str();
    }

    Mp3Rates mp3;
    WavCodecs acm;
    EncodeFormats formats{mp3, acm};
};

TEST_F(OutputFormats, EachContainerHasItsNumberAndAFormatOfItsOwn) {
    EXPECT_EQ(chosen(44100, 2), "0 44100 2 16 0 0") << "WAV, where nobody has chosen";
    formats.ACM.CodecsEnum();
    const std::pair<qint32, const char*> cases[] = {{1, "0 44100 2 16 0 0"},
                                                    {2, "2 44100 2 16 128000 0"},
                                                    {7, "3 8000 1 8 0 0"},
                                                    {8, "1 44100 2 16 0 0"}};
    for (const auto& [container, expected] : cases) {
        formats.FormatToUse = container;
        EXPECT_EQ(chosen(44100, 2), expected);
    }
}

TEST_F(OutputFormats, UncompressedDepthsByMode) {
    const std::tuple<qint32, qint32, const char*> cases[] = {
        {kWavContainer, 0, "0 44100 2 8 0 0"},
        {kWavContainer, 1, "0 44100 2 16 0 0"},
        {kWavContainer, 2, "0 44100 2 24 0 0"},
        {kWavContainer, 3, "0 44100 2 32 0 0"},
        {kWavContainer, 4, "0 44100 2 f32 0 0"},
        {kWavContainer, 5, "-9"},
        {kWavContainer, -1, "-9"},
        {kAiffContainer, 0, "1 44100 2 8 0 0"},
        {kAiffContainer, 1, "-9"},
        {kAiffContainer, 2, "1 44100 2 16 0 0"},
        {kAiffContainer, 3, "1 44100 2 24 0 0"},
        {kAiffContainer, 4, "1 44100 2 32 0 0"},
        {kAiffContainer, 5, "1 44100 2 f32 0 0"},
        {kAiffContainer, 6, "-9"},
        {3, 1, "-9"}};
    for (const auto& [container, mode, expected] : cases) {
        formats.FormatToUse = container;
        formats.WAV.EncodeMode = formats.AIFF.EncodeMode = mode;
        EXPECT_EQ(chosen(44100, 2), expected) << container << " " << mode;
    }
    formats.FormatToUse = kAiffContainer;
    formats.AIFF.EncodeMode = kAiff16;
    for (const auto& [hertz, channels] : {std::pair{7999, 1}, {192001, 1}, {8000, 0}, {8000, 3}})
        EXPECT_EQ(chosen(hertz, channels), "-9") << hertz;
    EXPECT_EQ(chosen(192000, 1), "1 192000 1 16 0 0");
    EXPECT_EQ(chosen(8000, 1), "1 8000 1 16 0 0");
}

TEST_F(OutputFormats, Mp3TakesTheListedRatesOnly) {
    formats.FormatToUse = kMp3Container;
    // Frequency, how many rates, the highest, which a list preselects, and the lowest.
    const std::tuple<qint32, qint32, double, double> lists[] = {{8000, 8, 64000, 8000},
                                                                {12000, 8, 64000, 8000},
                                                                {11025, 8, 64000, 8000},
                                                                {16000, 14, 160000, 8000},
                                                                {24000, 14, 160000, 8000},
                                                                {32000, 14, 320000, 32000},
                                                                {44100, 14, 320000, 32000},
                                                                {48000, 14, 320000, 32000},
                                                                {96000, 0, 0, 0},
                                                                {44101, 0, 0, 0},
                                                                {-1, 0, 0, 0}};
    for (const auto& [hertz, count, highest, lowest] : lists) {
        EXPECT_EQ(formats.MP3.CBR_GetCount(hertz), count) << hertz;
        EXPECT_EQ(formats.MP3.CBR_GetValue(hertz, 0), highest) << hertz;
        EXPECT_EQ(formats.MP3.CBR_GetValue(hertz, count - 1), lowest) << hertz;
        EXPECT_EQ(formats.MP3.CBR_GetValue(hertz, count), 0.0) << hertz;
    }
    const std::tuple<double, qint32, const char*> cases[] = {
        {320000.0, 44100, "2 44100 1 16 320000 0"},
        {64000.0, 11025, "2 11025 1 16 64000 0"},
        {128000.0, 11025, "-9"},
        {128000.0, 96000, "-9"},
        {128000.5, 44100, "-9"},
        {0.0, 96000, "-9"},
        {std::nan(""), 44100, "-9"}};
    for (const auto& [bitRate, hertz, expected] : cases) {
        formats.MP3.CBR = bitRate;
        EXPECT_EQ(chosen(hertz, 1), expected) << bitRate << " " << hertz;
    }
    formats.MP3.CBR = 128000.0;
    formats.MP3.EncodeMode = 2;
    EXPECT_EQ(chosen(44100, 1), "-9");
}

TEST_F(OutputFormats, CodecsAreListedOnceAskedForAndDecideRateAndChannels) {
    formats.FormatToUse = kAcmContainer;
    EXPECT_EQ(formats.ACM.CodecsGetCount() + formats.ACM.FormatsGetCount(0), 0);
    EXPECT_EQ(formats.ACM.CodecsGetName(0) + formats.ACM.FormatsGetName(0, 0), QString());
    EXPECT_EQ(chosen(0, 0), "-9");
    formats.ACM.CodecsEnum();
    QStringList codecs;
    for (qint16 codec = 0; codec < formats.ACM.CodecsGetCount(); ++codec) {
        const auto last = static_cast<qint16>(formats.ACM.FormatsGetCount(codec) - 1);
        codecs << QStringLiteral("%1: %2 - %3")
                      .arg(formats.ACM.CodecsGetName(codec), formats.ACM.FormatsGetName(codec, 0),
                           formats.ACM.FormatsGetName(codec, last));
        EXPECT_EQ(formats.ACM.FormatsGetName(codec, last + 1), QString());
    }
    EXPECT_EQ(codecs.join(u'\n').toStdString(),
              "PCM: 8.000 kHz, 8 Bit, Mono - 48.000 kHz, 24 Bit, Stereo\n"
              "A-law: 8.000 kHz, 8 Bit, Mono - 48.000 kHz, 8 Bit, Stereo\n"
              "mu-law: 8.000 kHz, 8 Bit, Mono - 48.000 kHz, 8 Bit, Stereo\n"
              "IMA ADPCM: 8.000 kHz, 4 Bit, Mono - 48.000 kHz, 4 Bit, Stereo\n"
              "Microsoft ADPCM: 8.000 kHz, 4 Bit, Mono - 48.000 kHz, 4 Bit, Stereo\n"
              "GSM 6.10: 8.000 kHz, Mono - 44.100 kHz, Mono");
    const std::tuple<qint16, qint16, const char*> cases[] = {{0, 1, "3 8000 2 8 0 0"},
                                                             {1, 3, "3 11025 2 8 0 1"},
                                                             {5, 0, "3 8000 1 0 0 5"},
                                                             {5, 4, "-9"},
                                                             {0, -1, "-9"},
                                                             {6, 1, "3 8000 2 8 0 0"},
                                                             {11, 0, "3 8000 1 0 0 5"},
                                                             {11, 4, "-9"},
                                                             {-1, 0, "-9"}};
    for (const auto& [codec, format, expected] : cases) {
        formats.ACM.CodecIndex = codec;
        formats.ACM.FormatIndex = format;
        EXPECT_EQ(chosen(0, 0), expected) << codec << " " << format;
    }
}

}  // namespace
}  // namespace tarnwick::engine
