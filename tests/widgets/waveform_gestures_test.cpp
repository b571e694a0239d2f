#include "waveform_desk.h"

namespace tarnwick::widgets {
namespace {

using WaveformGesturesTest = WaveformDesk;
constexpr auto kShift = Qt::ShiftModifier;
constexpr auto kCtrl = Qt::ControlModifier;

TEST_F(WaveformGesturesTest, LeftButtonSetsSelectsAndExtends) {
    const struct {
        const char* what;
        Numbers before;
        double press;
        Qt::KeyboardModifiers modifiers;
        std::vector<double> moves;
        double release;
        Numbers after;
    } cases[] = {
        {"click, by a hand that is not steady", {0, 0, 0}, 300, {}, {301}, 301, {1, 3000, 3000}},
        {"3 px make a drag", {0, 0, 0}, 300, {}, {303}, 303, {1, 3000, 3030}},
        {"drag back", {0, 0, 0}, 400, {}, {150}, 150, {1, 1500, 4000}},
        {"drag past the end", {0, 0, 0}, 400, {}, {150}, 2000, {1, 4000, 10000}},
        {"drag past the start", {0, 0, 0}, 400, {}, {-500}, -500, {1, 0, 4000}},
        {"left edge, taken 2 px beside it", {1, 3000, 6000}, 302, {}, {202}, 202, {1, 2000, 6000}},
        {"right edge past the left", {1, 3000, 6000}, 599, {}, {99}, 99, {1, 1000, 3000}},
        {"click on an edge", {1, 3000, 6000}, 301, {}, {}, 301, {1, 3010, 3010}},
        {"edge, 4 px beside it", {1, 3000, 6000}, 304, {}, {354}, 354, {1, 3500, 6000}},
        {"too far from it", {1, 3000, 6000}, 304.08, {}, {404}, 404, {1, 3041, 4040}},
        {"between two, the right one", {1, 3000, 3040}, 302, {}, {352}, 352, {1, 3000, 3540}},
        {"a cursor has none", {1, 3000, 3000}, 302, {}, {202}, 202, {1, 2020, 3020}},
        {"Shift+click in the middle", {1, 3000, 6000}, 450, kShift, {}, 450, {1, 4500, 6000}},
        {"Shift+click behind", {1, 3000, 6000}, 800, kShift, {}, 800, {1, 3000, 8000}},
        {"Shift+click near the left", {1, 3000, 6000}, 350, kShift, {}, 350, {1, 3500, 6000}},
        {"Shift+drag from a cursor", {1, 3000, 3000}, 200, kShift, {100}, 100, {1, 1000, 3000}},
        {"Shift+click without a selection", {0, 0, 0}, 200, kShift, {}, 200, {1, 2000, 2000}}};
    for (const auto& c : cases) {
        waveform.SetSelection(qint16(c.before[0]), c.before[1], c.before[2]);
        drag(c.press, c.moves, c.release, c.modifiers);
        EXPECT_EQ(selection(), c.after) << c.what;
    }
    mouse(QEvent::MouseButtonPress, Qt::RightButton, 100);
    EXPECT_EQ(waveform.notifications, std::vector<qint16>{3});
    EXPECT_EQ(selection(), (Numbers{1, 2000, 2000})) << "the view must not clear it itself";
}

TEST_F(WaveformGesturesTest, OtherButtonsAndKeysEndADragOrLeaveIt) {
    press(300);
    move(301);
    EXPECT_EQ(ticking(), nullptr) << "held, and not beyond an edge";
    mouse(QEvent::MouseButtonRelease, Qt::RightButton, 301);
    move(400);
    EXPECT_EQ(selection(), (Numbers{1, 3000, 4000})) << "still held";
    const std::function<void()> ends[] = {
        [&] { mouse(QEvent::MouseButtonPress, Qt::RightButton, 400); },
        [&] { key(Qt::Key_Escape); }, [&] { hover(500); }};
    for (const auto& end : ends) {
        waveform.SetSelection(0, 0, 0);
        press(300);
        move(400);
        end();
        move(600);
        release(600);
        EXPECT_EQ(selection(), (Numbers{1, 3000, 4000}));
    }
}

TEST_F(WaveformGesturesTest, ThePointerShowsWhatAPressWouldDo) {
    waveform.SetSelection(1, 3000, 6000);
    for (const auto& [x, shape] : {std::pair{303, Qt::SizeHorCursor},
                                   {450, Qt::IBeamCursor},
                                   {600, Qt::SizeHorCursor},
                                   {700, Qt::IBeamCursor}}) {
        hover(x);
        EXPECT_EQ(view.cursor().shape(), shape) << x;
    }
    drag(600, {800}, 800);
    EXPECT_EQ(view.cursor().shape(), Qt::SizeHorCursor) << "over the edge that it let go";
    waveform.channelCount = 0;
    hover(800);
    EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(WaveformGesturesTest, DragSurvivesAJumpOfTheViewScrollsItAndEndsWithTheSound) {
    waveform.SetDisplayRange(2000, 3000);
    press(500);
    move(700);
    EXPECT_EQ(selection(), (Numbers{1, 2500, 2700}));
    waveform.SetDisplayRange(2800, 3800);
    move(100);
    EXPECT_EQ(selection(), (Numbers{1, 2500, 2900}));
    move(1080);  // held 80 px beyond the edge
    QTimer* drag = ticking();
    ASSERT_TRUE(drag);
    EXPECT_EQ(drag->interval(), 16);
    for (int i = 0; i < 10; ++i)
        QMetaObject::invokeMethod(drag, "timeout");
    EXPECT_EQ(range(), (Numbers{3000, 4000}));
    EXPECT_EQ(selection(), (Numbers{1, 2500, 4000}));
    move(1600);
    QMetaObject::invokeMethod(drag, "timeout");
    EXPECT_EQ(range(), (Numbers{3100, 4100})) << "not faster than that";
    waveform.SetDisplayRange(2000, 4000);
    move(1080);
    QMetaObject::invokeMethod(drag, "timeout");
    EXPECT_EQ(range(), (Numbers{2040, 4040})) << "as many pixels";
    move(900);
    EXPECT_FALSE(drag->isActive());
    waveform.channelCount = 0;
    waveform.tell(engine::DisplayChange::Sound);
    waveform.channelCount = 1;
    waveform.SetSelection(0, 0, 0);
    move(100);
    release(100);
    EXPECT_EQ(selection(), (Numbers{0, 0, 0}));
}

TEST_F(WaveformGesturesTest, WheelZoomsAtThePointerAndScrollsWithShift) {
    wheel(29, 500);
    EXPECT_EQ(range(), (Numbers{0, -1})) << "less than a step";
    wheel(211, 500);
    EXPECT_EQ(range(), (Numbers{2500, 7500}));
    wheel(30, 500);
    EXPECT_EQ(range(), (Numbers{2707, 7292}));
    waveform.SetDisplayRange(2500, 7500);
    wheel({-30, 0}, 500);
    EXPECT_EQ(range(), (Numbers{2625, 7625}));
    wheel({30, 0}, 500, kShift);
    EXPECT_EQ(range(), (Numbers{2500, 7500})) << "turned sideways by the platform";
    wheel(-120, 0, kShift);
    EXPECT_EQ(range(), (Numbers{3000, 8000}));
    for (int i = 0; i < 16; ++i)
        wheel(-15, 500);  // the small steps of a fine wheel add up
    EXPECT_EQ(range(), (Numbers{0, -1}));
    waveform.durationMs = 59231;
    for (const double x : {0.0, 333.0, 999.0}) {
        for (int i = 0; i < 4; ++i)
            wheel(120, x);
        for (int i = 0; i < 4; ++i)
            wheel(-120, x);
        EXPECT_EQ(range(), (Numbers{0, -1})) << "zoomed out to the last millisecond";
    }
}

TEST_F(WaveformGesturesTest, KeysDoWhatTheMouseDoes) {
    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        Numbers before, after;
        Numbers range = {4000, 6000};  // 2 ms per pixel
    } cases[] = {{Qt::Key_Right, {}, {1, 5000, 5000}, {1, 5020, 5020}},
                 {Qt::Key_Right, kCtrl, {1, 5000, 5000}, {1, 5002, 5002}},
                 {Qt::Key_Left, {}, {1, 5, 5}, {1, 0, 0}, {0, 2000}},
                 {Qt::Key_Left, {}, {1, 5000, 5000}, {1, 4980, 4980}},
                 {Qt::Key_Right, {}, {0, 0, 0}, {1, 4020, 4020}},
                 {Qt::Key_Right, kShift, {1, 5000, 5000}, {1, 5000, 5020}},
                 {Qt::Key_Left, kShift, {1, 5000, 5100}, {1, 5000, 5080}},
                 {Qt::Key_Left, kShift, {1, 5000, 5000}, {1, 4980, 5000}},
                 {Qt::Key_Right, kShift | kCtrl, {1, 9999, 9999}, {1, 9999, 10000}, {8000, 10000}},
                 {Qt::Key_Home, {}, {1, 5000, 5000}, {1, 0, 0}, {0, 2000}},
                 {Qt::Key_End, kShift, {1, 5000, 5000}, {1, 5000, 10000}, {8000, 10000}},
                 {Qt::Key_A, kCtrl, {0, 0, 0}, {1, 0, 10000}},
                 {Qt::Key_PageDown, {}, {0, 0, 0}, {0, 0, 0}, {6000, 8000}},
                 {Qt::Key_PageUp, {}, {0, 0, 0}, {0, 0, 0}, {2000, 4000}}};
    for (const auto& c : cases) {
        waveform.SetDisplayRange(4000, 6000);
        waveform.SetSelection(qint16(c.before[0]), c.before[1], c.before[2]);
        EXPECT_TRUE(key(c.key, c.modifiers));
        EXPECT_EQ(selection(), c.after) << c.key << " from " << c.before[1];
        EXPECT_EQ(range(), c.range) << c.key << " from " << c.before[1];
    }
    // Ten pixels, or one; at least a millisecond.
    const std::tuple<Qt::KeyboardModifier, qint32, qint32, qint32> steps[] = {
        {Qt::NoModifier, -1, 5000, 5100},
        {kCtrl, -1, 5000, 5010},
        {Qt::NoModifier, 4100, 4000, 4001},
        {kCtrl, 4100, 4000, 4001}};
    for (const auto& [modifiers, end, from, to] : steps) {
        waveform.SetDisplayRange(end < 0 ? 0 : 4000, end);
        waveform.SetSelection(1, from, from);
        key(Qt::Key_Right, modifiers);
        EXPECT_EQ(selection(), (Numbers{1, to, to})) << modifiers;
    }
    const std::tuple<double, qint32, qint32> starts[] = {
        {0, 4000, 20}, {4500, 4000, 4520}, {-1, 4000, 4020}, {-1, -1000, 20}};
    for (const auto& [heard, begin, to] : starts) {
        waveform.SetDisplayRange(begin, begin + 2000);
        waveform.SetSelection(0, 0, 0);
        waveform.playMs = heard;
        key(Qt::Key_Right);
        EXPECT_EQ(waveform.selectionBegin, to) << "from what is heard, or seen";
    }
    waveform.SetSelection(0, 0, 0);
    waveform.SetDisplayRange(4000, 6000);
    EXPECT_FALSE(key(Qt::Key_Left, Qt::AltModifier)) << "others'";
    EXPECT_FALSE(key(Qt::Key_Escape)) << "nothing to clear: others may want it";
    EXPECT_EQ(selection(), (Numbers{0, 0, 0}));
    EXPECT_EQ(view.accessibleDescription(), "Shows 0:04.000 to 0:06.000, nothing selected");
    waveform.SetSelection(1, 5000, 5000);
    EXPECT_EQ(view.accessibleDescription(), "Shows 0:04.000 to 0:06.000, cursor at 0:05.000");
    waveform.SetDisplayRange(2000, 4000);
    for (int i = 0; i < 3; ++i)
        key(Qt::Key_Left, kShift);
    key(Qt::Key_Right, kShift);
    EXPECT_EQ(selection(), (Numbers{1, 4960, 5000})) << "the same end must keep moving";
    for (const int zoomIn : {Qt::Key_Up, Qt::Key_Plus, Qt::Key_Equal})
        EXPECT_TRUE(key(zoomIn));
    EXPECT_EQ(waveform.zooms, 3);
    for (const int zoomOut : {Qt::Key_Down, Qt::Key_Minus})
        EXPECT_TRUE(key(zoomOut));
    EXPECT_EQ(waveform.zooms, 1);
    EXPECT_EQ(view.accessibleDescription(),
              "Shows 0:03.180 to 0:05.180, 0:04.960 to 0:05.000 selected");
    EXPECT_TRUE(key(Qt::Key_Escape));
    EXPECT_EQ(waveform.notifications, std::vector<qint16>{3});
    int asked = 0;
    QObject::connect(&view, &WaveformView::playPauseAsked, [&] { ++asked; });
    EXPECT_TRUE(key(Qt::Key_Space));
    EXPECT_FALSE(key(Qt::Key_Space, kCtrl));
    EXPECT_EQ(asked, 1);
    for (const int shortcut : {Qt::Key_F1, Qt::Key_F2, Qt::Key_Tab})
        EXPECT_FALSE(key(shortcut)) << shortcut;
}

TEST_F(WaveformGesturesTest, WithoutASoundNothingHappens) {
    waveform.channelCount = 0;
    waveform.tell(engine::DisplayChange::Sound);
    drag(300, {400}, 400);
    mouse(QEvent::MouseButtonPress, Qt::RightButton, 300);
    wheel(120, 300);
    for (const int any : {Qt::Key_Right, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Up, Qt::Key_Escape})
        EXPECT_FALSE(key(any));
    EXPECT_EQ(selection(), (Numbers{0, 0, 0}));
    EXPECT_TRUE(waveform.notifications.empty());
    EXPECT_EQ(range(), (Numbers{0, -1}));
    EXPECT_EQ(waveform.zooms, 0);
    EXPECT_EQ(view.accessibleDescription(), "No sound");
}

}  // namespace
}  // namespace tarnwick::widgets
