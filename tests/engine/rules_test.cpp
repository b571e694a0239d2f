#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QStringList>
#include <cmath>
#include <memory>
#include <sstream>
#include <thread>

#include "engine/create_sound_editor.h"
#include "engine/editor_directory.h"
#include "engine/encoder_lists.h"
#include "engine/event_queue.h"
#include "engine/failure_codes.h"
#include "engine/one_shot_timer.h"
#include "engine/output_format.h"
#include "engine/time_text.h"
#include "engine/view_range.h"
#include "support/fault_of.h"
#include "support/few_threads.h"
#include "support/text_table.h"
#include "support/wait_until.h"

namespace tarnwick::engine {
namespace {

TEST(TimeText, ShowsHoursMinutesSecondsAndMilliseconds) {
    const std::pair<qint32, const char*> cases[] = {
        {0, "00:00:00.000"},
        {3599999, "00:59:59.999"},
        {-1500, "-00:00:01.500"},
        {360000000, "100:00:00.000"},
        {std::numeric_limits<qint32>::min(), "-596:31:23.648"}};
    for (const auto& [ms, text] : cases)
        EXPECT_EQ(timeText(ms).toStdString(), text);
}

TEST(ErrorCodes, AreTheNumbersThatBoxesShow) {
    using sound::SoundFailure;
    const std::pair<SoundFailure, int> failures[] = {
        {SoundFailure::NoSpace, -2},       {SoundFailure::NotFound, -4},
        {SoundFailure::NotASound, -5},     {SoundFailure::Damaged, -6},
        {SoundFailure::SourceChanged, -7}, {SoundFailure::BadRange, -8},
        {SoundFailure::BadFormat, -9},     {SoundFailure::WriteFailed, -10},
        {SoundFailure::NoDevice, -12},     {SoundFailure::Cancelled, -11}};
    for (const auto& [failure, code] : failures)
        EXPECT_EQ(codeOf(sound::SoundError(failure, "")), code);
    EXPECT_EQ(codeOf(EditorError(kNoSound, "")), -3);
    EXPECT_EQ(codeOf(std::bad_alloc()), -2);
    EXPECT_EQ(codeOf(std::length_error("")), -2);
    EXPECT_EQ(codeOf(std::runtime_error("")), -6);
    EXPECT_EQ(attempt([] {}), kOk);
    using std::errc;  // failing to start a thread must not count as a damaged file
    EXPECT_EQ(codeOf(std::system_error(make_error_code(errc::resource_unavailable_try_again))), -2);
    EXPECT_EQ(codeOf(std::system_error(make_error_code(errc::io_error))), -6);
}

TEST(WaveformSettings, HasItsFieldsAtTheirPlaces) {
    using Settings = WaveformSettings;
    Settings settings;
    EXPECT_EQ(sizeof settings, 100u);
    settings.setVerticalScale(1.0f);
    EXPECT_EQ(settings.verticalScale(), 1.0f);
    EXPECT_EQ((std::array{settings.byteAt(78), settings.byteAt(79), settings.byteAt(80)}),
              (std::array<unsigned char, 3>{0x80, 0x3f, 0}));
    EXPECT_EQ(Settings::kHideRuler, 50u);
    EXPECT_EQ(Settings::kHideLevels, 51u);
}

TEST(EditorDirectory, AWindowHasOneEditorAndAnEditorOneWindow) {
    EditorDirectory directory;
    const DeliveredSound one, other;
    directory.add(1, &one);
    EXPECT_EQ(directory.find(1), &one);
    directory.add(2, &one);
    EXPECT_EQ(directory.find(1), nullptr);
    directory.add(2, &other);
    EXPECT_EQ(directory.find(2), &other);
    directory.add(1, &one);
    directory.remove(&other);
    EXPECT_EQ(directory.find(2), nullptr);
    EXPECT_EQ(directory.find(1), &one);
    directory.add(0, &one);
    EXPECT_EQ(directory.find(0), nullptr) << "no window";
}

TEST(OneShotTimer, FiresOnceForManyArmingsAndNotWhenDisarmed) {
    const runtime::FailurePath failure({}, {});
    QTimer timer;
    timer.start(5);
    int fired = 0;
    OneShotTimer shot(failure, timer, [&] { fired += timer.isActive() ? 100 : 1; });
    EXPECT_FALSE(shot.armed());
    EXPECT_EQ(timer.interval(), 100);
    timer.setInterval(1);
    shot.arm();
    shot.arm();
    EXPECT_TRUE(shot.armed());
    test::waitUntil([&] { return fired != 0; });
    EXPECT_EQ(fired, 1);
    EXPECT_FALSE(shot.armed());
    shot.arm();
    shot.disarm();
    EXPECT_FALSE(timer.isActive());
}

TEST(ViewRange, ZoomsByTwoAndStaysInsideTheSound) {
    constexpr qint32 kLength = 60000;
    const ViewRange whole;
    const std::pair<ViewRange, ViewRange> cases[] = {
        {zoomedIn({10000, 20000}, 19000, kLength), {16500, 21500}},
        {zoomedIn(whole, 1000, kLength), {0, 30000}},       // moved to the sound's start
        {zoomedIn(whole, 59000, kLength), {30000, 60000}},  // and to its end
        {zoomedIn({70000, -1}, 0, kLength), {0, 0}},        // a view behind the sound is empty
        {zoomedOut({0, 30000}, 15000, kLength), whole},
        {zoomedOut({0, 29999}, 30000, kLength), {1, 59999}},
        {zoomedOut({3, 9}, 5, 0), {3, 9}},
        {zoomedIn({100, 121}, 110, kLength), {105, 115}},
        {zoomedIn({55000, 75000}, 65000, kLength), {50000, 60000}},
        {zoomedIn({100, 115}, 107, kLength), {102, 112}},  // the shortest view
        {zoomedIn({100, 104}, 102, kLength), {100, 104}},  // shorter ones are not widened
        {zoomedOut({0, 40000}, 20000, kLength), whole},
        {zoomedOut({100, 100}, 100, kLength), {95, 105}},
        {zoomedTo({1000, 1000}, kLength), {995, 1005}},  // a cursor
        {zoomedIn({3, 9}, 5, 0), {3, 9}}                 // no sound
    };
    for (std::size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(cases[i].first, cases[i].second) << "case " << i;
}

TEST(CreateSoundEditor, FaultsWhereNotAllOfItsThreadsCanBeStarted) {
    const auto create = [] {
        const QString fault = test::faultOf([] { createSoundEditor(); });
        if (fault == u"none") return 1;
        return fault == u"The sound engine cannot be started: Resource temporarily unavailable" ? 0
                                                                                                : 2;
    };
    EXPECT_EQ(test::withFewThreads(0, create), 0);
    for (rlim_t most = 1; most < 10; ++most) {
        const int result = test::withFewThreads(most, create);
        EXPECT_TRUE(result == 0 || result == 1) << most << " threads: " << result;
    }
}

TEST(EventQueue, KeepsTheOrderThroughNestedLoopsAndDropsOldGenerations) {
    EventQueue queue;
    std::string heard;
    const quint64 old = queue.generation();
    std::thread([&] {
        queue.post(old, [&] {
            heard += 'a';
            QEventLoop().processEvents();  // as a message box would
            heard += 'd';
        });
        queue.post(old, [&] {
            heard += 'b';
            queue.startGeneration();
        });
        queue.post(old, [&] { heard += 'x'; });
        queue.post(EventQueue::kAnyGeneration, [&] { heard += 'c'; });
    }).join();
    QCoreApplication::processEvents();
    EXPECT_EQ(heard, "abcd");
}

TEST(EventQueue, MayBeDestroyedByADelivery) {
    auto queue = std::make_unique<EventQueue>();
    bool more = false;
    queue->post([&] { queue.reset(); });
    queue->post([&] { more = true; });
    QCoreApplication::processEvents();
    EXPECT_FALSE(queue);
    EXPECT_FALSE(more);
}

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
    EXPECT_EQ(chosen(44100, 2), "0 44100 2 16 0 0") << "WAV is the default";
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

TEST_F(OutputFormats, TwoSecondsHaveASizeInEachKind) {
    using sound::Container;
    const std::pair<sound::OutputFormat, qint64> rows[] = {
        {{Container::Wav, {44100, 2, 16, false}}, 352'900},
        {{Container::Mp3, {44100, 2, 16, false}, 128000}, 32'100},
        {{Container::WavCodec, {8000, 1, 0, false}}, 3'350}};
    for (const auto& [output, bytes] : rows)
        EXPECT_EQ(bytesOf(output, 2000), bytes);
}

TEST_F(OutputFormats, UncompressedDepthsByMode) {
    // For each mode from -1 on: the depth that the container gets, or the refusal.
    const std::pair<qint32, const char*> cases[] = {
        {kWavContainer, "-9|0 8|0 16|0 24|0 32|0 f32|-9|-9"},
        {kAiffContainer, "-9|1 8|-9|1 16|1 24|1 32|1 f32|-9"},
        {3, "-9|-9|-9|-9|-9|-9|-9|-9"}};
    for (const auto& [container, expected] : cases) {
        QStringList told;
        for (qint32 mode = -1; mode <= 6; ++mode) {
            formats.FormatToUse = container;
            formats.WAV.EncodeMode = formats.AIFF.EncodeMode = mode;
            told << QString::fromStdString(chosen(44100, 2))
                        .remove(QStringLiteral("44100 2 "))
                        .remove(QStringLiteral(" 0 0"));
        }
        EXPECT_EQ(told.join(u'|').toStdString(), expected);
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
    // Frequency, its number of bit rates, the highest one (preselected in the list), and the
    // lowest.
    const std::tuple<std::vector<qint32>, qint32, double, double> lists[] = {
        {{8000, 12000, 11025}, 8, 64000, 8000},
        {{16000, 24000}, 14, 160000, 8000},
        {{32000, 44100, 48000}, 14, 320000, 32000},
        {{96000, 44101, -1}, 0, 0, 0}};
    for (const auto& [frequencies, count, highest, lowest] : lists)
        for (const qint32 hertz : frequencies) {
            EXPECT_EQ(formats.MP3.CBR_GetCount(hertz), count) << hertz;
            EXPECT_EQ(formats.MP3.CBR_GetValue(hertz, 0), highest) << hertz;
            EXPECT_EQ(formats.MP3.CBR_GetValue(hertz, count - 1), lowest) << hertz;
            EXPECT_EQ(formats.MP3.CBR_GetValue(hertz, count), 0.0) << hertz;
        }

    const char* const cases = R"(
320000|44100|2 44100 1 16 320000 0|64000|11025|2 11025 1 16 64000 0|
128000|11025|-9|128000|96000|-9|128000.5|44100|-9|0|96000|-9|nan|44100|-9)";
    for (const QStringList& row : test::rowsOf(cases, 3)) {
        formats.MP3.CBR = row[0].toDouble();
        EXPECT_EQ(chosen(row[1].toInt(), 1), row[2].toStdString()) << qPrintable(row[0]);
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
    const char* const cases = R"(
0|1|3 8000 2 8 0 0|1|3|3 11025 2 8 0 1|5|0|3 8000 1 0 0 5|5|4|-9|0|-1|-9|
6|1|3 8000 2 8 0 0|11|0|3 8000 1 0 0 5|11|4|-9|-1|0|-9)";
    for (const QStringList& row : test::rowsOf(cases, 3)) {
        formats.ACM.CodecIndex = row[0].toShort();
        formats.ACM.FormatIndex = row[1].toShort();
        EXPECT_EQ(chosen(0, 0), row[2].toStdString()) << qPrintable(row.join(u' '));
    }
}

}  // namespace
}  // namespace tarnwick::engine
