#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <memory>
#include <thread>

#include "engine/create_sound_editor.h"
#include "engine/editor_directory.h"
#include "engine/event_queue.h"
#include "engine/failure_codes.h"
#include "engine/one_shot_timer.h"
#include "engine/time_text.h"
#include "engine/view_range.h"
#include "support/fault_of.h"
#include "support/few_threads.h"
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

TEST(FailureCodes, AThreadThatCannotBeStartedIsNoDamagedFile) {
    using std::errc;
    EXPECT_EQ(codeOf(std::system_error(make_error_code(errc::resource_unavailable_try_again))), -2);
    EXPECT_EQ(codeOf(std::system_error(make_error_code(errc::io_error))), -6);
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

}  // namespace
}  // namespace tarnwick::engine
