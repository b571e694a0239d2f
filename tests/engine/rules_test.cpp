#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <memory>
#include <thread>

#include "engine/create_sound_editor.h"
#include "engine/event_queue.h"
#include "engine/time_text.h"
#include "engine/view_range.h"
#include "runtime/fault.h"
#include "support/few_threads.h"

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

TEST(ViewRange, ZoomsByTwoAndStaysInsideTheSound) {
    constexpr qint32 kLength = 60000;
    const ViewRange whole;
    const std::pair<ViewRange, ViewRange> cases[] = {
        {zoomedIn({10000, 20000}, 19000, kLength), {16500, 21500}},
        {zoomedIn(whole, 1000, kLength), {0, 30000}},       // moved to the sound's start
        {zoomedIn(whole, 59000, kLength), {30000, 60000}},  // and to its end
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
        try {
            createSoundEditor();
            return 1;
        } catch (const runtime::Fault& fault) {
            return fault.description() ==
                           "The sound engine cannot be started: Resource temporarily "
                           "unavailable."
                       ? 0
                       : 2;
        }
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

}  // namespace
}  // namespace tarnwick::engine
