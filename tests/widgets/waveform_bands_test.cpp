#include <QHelpEvent>
#include <QToolTip>
#include <random>

#include "engine/sound_events.h"
#include "waveform_desk.h"
#include "widgets/band_geometry.h"

namespace tarnwick::widgets {
namespace {

using engine::DisplayChange;
using engine::SilenceMs;

TEST(BandGeometry, FindsSilencesAndStretchesAsALookAtEachWould) {
    std::mt19937 random(3);
    std::vector<SilenceMs> silences;
    for (qint32 ms = 50; ms < 2000;) {
        const auto finish = ms + qint32(random() % 40);  // some have no length
        silences.push_back({ms, finish});
        ms = finish + 1 + qint32(random() % 60);
    }
    const int last = int(silences.size()) - 1;
    const auto stretchOf = [&](double ms) {
        for (int i = 1; i <= last; ++i)
            if (silences[std::size_t(i - 1)].finish <= ms && ms < silences[std::size_t(i)].start)
                return i;
        return 0;
    };
    for (double ms = 0; ms < 2100; ms += 0.5)
        ASSERT_EQ(stretchAt(silences, ms), stretchOf(ms)) << ms;
    for (const TimeRange view : {TimeRange{-100, 30}, {0, 2100}, {333, 334}, {700, 1000}}) {
        int first = 0, end = 0;
        for (double ms = view.beginMs + 0.25; ms < view.endMs; ms += 0.5) {
            if (first == 0) first = stretchOf(ms);
            end = std::max(end, stretchOf(ms));
        }
        const StretchRange seen = stretchesIn(silences, view);
        if (end == 0)
            EXPECT_LT(seen.last, seen.first) << view.beginMs;
        else
            EXPECT_EQ(seen, (StretchRange{first, end})) << view.beginMs;
        for (const int columns : {1, 7, 300}) {
            const std::vector<float> shares = coverage(silences, view, columns);
            const double width = view.width() / columns;
            for (int i = 0; i < columns; ++i) {
                const double begin = view.beginMs + i * width;
                double covered = 0.0;
                for (const SilenceMs& s : silences)
                    covered += std::max(0.0, std::min(begin + width, double(s.finish)) -
                                                 std::max(begin, double(s.start)));
                ASSERT_NEAR(shares.at(std::size_t(i)), covered / width, 1e-4) << columns;
            }
        }
    }
    EXPECT_LT(stretchesIn({}, {0, 9}).last, 1);
    EXPECT_FALSE(stretchTimes(silences, 0) || stretchTimes(silences, last + 1));
}

TEST(BandGeometry, NumbersAreLeftOutLikeThoseOfARuler) {
    const struct {
        int first, count;
        double distance, width;
        int step;
    } cases[] = {{1, 9, 20, 14, 1},    {1, 9, 19, 14, 2}, {3, 40, 10, 16, 5}, {3, 400, 3, 20, 10},
                 {1, 4000, 1, 30, 50}, {7, 2, 1, 30, 2},  {1, 1, 1, 30, 1},   {5, 0, 1, 30, 1}};
    for (const auto& c : cases) {
        std::vector<NumberPlace> places;
        for (int i = 0; i < c.count; ++i)
            places.push_back({c.first + i, i * c.distance, i * c.distance + c.width});
        EXPECT_EQ(numberStep(places, 6.0), c.step) << c.distance;
    }
    const std::vector<qint32> marks{100, 200, 200, 1000};
    for (const auto& [ms, nearest] :
         {std::pair{-5, 0}, {149, 0}, {151, 1}, {300, 2}, {600, 2}, {601, 3}, {5000, 3}})
        EXPECT_EQ(nearestMark(marks, ms), nearest) << ms;
    EXPECT_FALSE(nearestMark({}, 5));
}

// Ten seconds with four silences, so three stretches, of 1.5, 2 and 3 seconds.
class WaveformBands : public WaveformDesk {
  protected:
    std::vector<int> mended;  // the slips that were asked for

    void SetUp() override {
        WaveformDesk::SetUp();
        QObject::connect(&view, &WaveformView::mendAsked,
                         [this](int slip) { mended.push_back(slip); });
        waveform.swing = 0.25f;
        waveform.pauses = {{0, 500}, {2000, 3000}, {5000, 6000}, {9000, 10000}};
        scan();
    }
    void scan() {
        waveform.wasScanned = true;
        waveform.tell(DisplayChange::Silences);
    }
    void edit() {
        waveform.pauses.clear();
        waveform.tell(DisplayChange::Sound);
    }
    WaveformLayout layout(double ratio = 1.0) const {
        return {view.size(), ratio, waveform.settings, view.font(), true};
    }
    // The columns of the strip, from the left edge of the wave, with that colour in some row.
    Numbers columnsOf(const QColor& colour, double least = 0.0) {
        const QImage image = picture();
        const QRect strip = layout().strip();
        Numbers columns;
        for (int x = strip.left(); x <= strip.right(); ++x)
            for (int y = strip.top(); y < strip.bottom() - 3; ++y) {
                const QColor seen = image.pixelColor(x, y);
                if (least > 0.0 ? contrast(seen, colours().scaleGround) > least : seen == colour) {
                    columns.push_back(x - strip.left());
                    break;
                }
            }
        return columns;
    }
    // The middles of the texts in the strip.
    Numbers texts() {
        Numbers middles;
        int first = -9, before = -9;
        for (const int x : columnsOf({}, 1.5)) {
            if (x > before + 4) middles.push_back(first = x);
            before = x;
            middles.back() = (first + x) / 2;
        }
        return middles;
    }
    void doubleClick(double x, double y, Qt::MouseButton button = Qt::LeftButton) {
        const QPointF place(x + kFrame, y);
        for (const auto type : {QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, place, place, button,
                              type == QEvent::MouseButtonRelease ? Qt::NoButton : button,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(&view, &event);
        }
    }
    QString tipAt(int x, int y) {
        QToolTip::showText({}, {});
        QHelpEvent event(QEvent::ToolTip, QPoint(x + kFrame, y), QPoint(1, 1));
        QCoreApplication::sendEvent(&view, &event);
        return event.isAccepted() ? QToolTip::text() : QString();
    }
    QColor bandAt(int x) { return picture().pixelColor(x + kFrame, 190); }
};

TEST_F(WaveformBands, AreDrawnBehindTheWaveOfAScannedSound) {
    const WaveformColours c = colours();
    EXPECT_EQ(seen({{199, 190}, {200, 190}, {299, 190}, {300, 190}, {250, 110}}), ".~~.#");
    waveform.pauses = {{2002, 2005}, {5000, 6000}};  // less than a column of 10 ms
    scan();
    EXPECT_NE(bandAt(200), c.background);
    EXPECT_LT(contrast(bandAt(200), c.background), contrast(c.band, c.background));
    EXPECT_EQ(bandAt(201), c.background);

    const QRgb waveTop = picture().pixel(300, 100);
    edit();
    EXPECT_EQ(bandAt(550), c.background) << "untrue";
    EXPECT_EQ(picture().pixel(300, 100), waveTop);
    EXPECT_EQ(picture().pixelColor(500, 5), c.scaleGround) << "the strip stays, nothing jumps";
    waveform.pauses = {{5000, 6000}};
    waveform.wasScanned = false;
    waveform.tell(DisplayChange::Sound);
    EXPECT_EQ(bandAt(550), c.background);
    EXPECT_EQ(picture().pixelColor(500, 5), c.background) << "a new sound has no strip";
}

TEST_F(WaveformBands, NumbersStandOverTheVisiblePartsOfTheirStretches) {
    const auto near = [](const Numbers& found, const Numbers& expected) {
        EXPECT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < std::min(found.size(), expected.size()); ++i)
            EXPECT_NEAR(found[i], expected[i], 2);
    };
    near(texts(), {125, 400, 750});
    view.showRows({{false, true}, {}});
    const Numbers red = columnsOf(colours().flagged);
    ASSERT_FALSE(red.empty());
    EXPECT_TRUE(red.front() > 390 && red.back() < 410);
    waveform.SetDisplayRange(1000, 4000);
    near(texts(), {166, 833});
    waveform.SetDisplayRange(1999, 4999);
    near(texts(), {666});  // no room at the left edge
    waveform.SetDisplayRange(3500, 4000);
    near(texts(), {500});
    waveform.SetDisplayRange(0, -1);
    waveform.pauses.clear();
    for (qint32 ms = 0; ms <= 10000; ms += 100)
        waveform.pauses.push_back({ms, ms + 20});
    scan();
    Numbers multiples;
    for (int number = 2; number <= 98; number += 2)
        multiples.push_back(number * 10 - 4);
    near(texts(), multiples);
    EXPECT_EQ(columnsOf(colours().flagged), Numbers()) << "forgotten at the scan";
}

// The lower edge of the strip and the wave. The pressed stretch is marked there, below its number.
TEST_F(WaveformBands, BandsAndMarksStandAtTheirColumns) {
    waveform.swing = 0.0f;
    waveform.durationMs = 40;
    waveform.pauses = {{0, 6}, {12, 20}, {31, 35}};
    scan();
    view.resize(40 + 2 * kFrame, 80);
    view.showRows({{}, {2, 12, 16, 39}});
    view.showPressedRow(2);
    const auto below = [&](int ratio, int rows) {
        return drawn(ratio, layout(ratio).strip().bottom() - 4 * ratio, rows);
    };
    EXPECT_EQ(below(1, 14), R"(
+__________________________________________+
+_____________________||_______||__________+
+_____________________||_______||__________+
+_____________________|||||||||||__________+
+_++++++++++++++++++++|||||||||||+++++++++_+
+_vvvvvvx.xvv.xvvvvvvvx..........~~~.xvvvv_+
+_vvvvvx...xvx.xvvvvvx...........~~~..xvvv_+
+_vvvvv.....vv..vvvvv............~~~~..vvv_+
+_xvvvx.....xvx.xvvvx............~~~~..xvv_+
+_.xvx.......xvx.xvx.............~~~~...xv_+
+_..v..~......v...v..~...........~~~~....v_+
+_..x..~......x...x..~...........~~~~....x_+
+_~._.~~......_.~._.~~...........~~~~....._+
+_~~~~~~......~~~~~~~~...........~~~~....._+
)");
    EXPECT_EQ(below(2, 26), R"(
++____________________________________________________________________________________++
++__________________________________________||||______________||||____________________++
++__________________________________________||||______________||||____________________++
++__________________________________________||||______________||||____________________++
++__________________________________________||||______________||||____________________++
++__________________________________________||||||||||||||||||||||____________________++
++__________________________________________||||||||||||||||||||||____________________++
++__++++++++++++++++++++++++++++++++++++++++||||||||||||||||||||||++++++++++++++++++__++
++__++++++++++++++++++++++++++++++++++++++++||||||||||||||||||||||++++++++++++++++++__++
++__vvvvvvvvvvvvx...xvvvvx..xvvvvvvvvvvvvvvvx.....................~~~~~...xvvvvvvvvv__++
++__vvvvvvvvvvvvx...xvvvvx..xvvvvvvvvvvvvvvvx.....................~~~~~...xvvvvvvvvv__++
++__vvvvvvvvvvvx.....xvvvvx..xvvvvvvvvvvvvvx......................~~~~~~...xvvvvvvvv__++
++__vvvvvvvvvvv.......vvvvv...vvvvvvvvvvvvv.......................~~~~~~~...vvvvvvvv__++
++__vvvvvvvvvvx.......xvvvvx..xvvvvvvvvvvvx.......................~~~~~~~...xvvvvvvv__++
++__vvvvvvvvvx.........xvvvvx..xvvvvvvvvvx........................~~~~~~~~...xvvvvvv__++
++__vvvvvvvvv...........vvvvx...vvvvvvvvv.........................~~~~~~~~....vvvvvv__++
++__xvvvvvvvx...........xvvvvx..xvvvvvvvx.........................~~~~~~~~....xvvvvv__++
++__.xvvvvvx...~.........xvvvvx..xvvvvvx...~......................~~~~~~~~.....xvvvv__++
++__..vvvvv...~~..........vvvvx...vvvvv...~~......................~~~~~~~~......vvvv__++
++__..xvvvx...~~..........xvvvx...xvvvx...~~......................~~~~~~~~......xvvv__++
++__...xvx...~~~...........xvx.....xvx...~~~......................~~~~~~~~.......xvx__++
++__....v....~~~............v.......v....~~~......................~~~~~~~~........v.__++
++__~...x...~~~~............x...~...x...~~~~......................~~~~~~~~........x.__++
++__~~_..._~~~~~.............._~~~_..._~~~~~......................~~~~~~~~..........__++
++__~~~...~~~~~~..............~~~~~...~~~~~~......................~~~~~~~~..........__++
++__~~~~~~~~~~~~............~~~~~~~~~~~~~~~~......................~~~~~~~~..........__++
)");
    waveform.SetDisplayRange(25, 65);
    EXPECT_EQ(below(1, 5), R"(
+__________________________________________+
+_____||___________________________________+
+_____||___________________________________+
+_||||||___________________________________+
+_||||||++++++++++++++++++++++++++++++++++_+
)");
    view.showPressedRow(4);
    EXPECT_EQ(below(1, 5).find('|'), std::string::npos) << "there is no such stretch";
}

TEST_F(WaveformBands, ADoubleClickOnAMarkOrItsKeyAsksForMending) {
    view.showRows({{}, {1000, 1040, 8000}});
    const double top = layout().wave().top();
    const struct {
        double x, y;
        int slip;  // -1: none
    } cases[] = {{100, top + 3, 0}, {105, 5, 1},        {95, top + 3, 0},    {807, top + 8, 2},
                 {793, 5, 2},       {811, top + 3, -1}, {800, top + 14, -1}, {500, 5, -1}};
    for (const auto& c : cases) {
        mended.clear();
        waveform.selected = 0;
        doubleClick(c.x, c.y);
        EXPECT_EQ(mended.empty() ? -1 : mended[0], c.slip) << c.x << " " << c.y;
        EXPECT_EQ(waveform.selected, c.slip == -1 ? 1 : 0) << "elsewhere it sets the cursor";
    }
    mended.clear();
    doubleClick(800, 5, Qt::RightButton);
    EXPECT_EQ(waveform.notifications, std::vector<qint16>{engine::kMouseClearsSelection});
    EXPECT_TRUE(key(Qt::Key_M));
    EXPECT_EQ(mended, std::vector<int>{2});
    waveform.SetDisplayRange(0, 3000);
    key(Qt::Key_M);
    EXPECT_EQ(mended, (std::vector<int>{2, 1}));
    // A mark of the pressed stretch is preferred as long as it is in the view.
    for (const auto& [pressed, end, slip] :
         {std::tuple{1, 10000, 1}, {2, 10000, 2}, {3, 10000, 2}, {3, 3000, 1}}) {
        view.showPressedRow(pressed);
        waveform.SetDisplayRange(0, end);
        key(Qt::Key_M);
        EXPECT_EQ(mended.back(), slip) << pressed;
    }
    view.showPressedRow(3);
    key(Qt::Key_M);
    EXPECT_EQ(mended.back(), 2) << "the press did not move the view";
    mended.resize(2);
    edit();
    key(Qt::Key_M);
    doubleClick(103, 5);
    EXPECT_EQ(mended.size(), 2) << "forgotten";
}

TEST_F(WaveformBands, KeysAskForDoubtfulRowsAndSwitchTheRowsOff) {
    std::vector<bool> asked;
    QObject::connect(&view, &WaveformView::doubtfulRowAsked,
                     [&](bool forward) { asked.push_back(forward); });
    int deletions = 0, insertions = 0;
    QObject::connect(&view, &WaveformView::deletionAsked, [&] { ++deletions; });
    QObject::connect(&view, &WaveformView::silenceAsked, [&] { ++insertions; });
    EXPECT_TRUE(key(Qt::Key_Delete) && key(Qt::Key_Insert) && key(Qt::Key_Insert));
    EXPECT_EQ(std::pair(deletions, insertions), std::pair(1, 2));
    view.showRows({{true}, {5500}});
    const QImage before = picture();
    EXPECT_TRUE(key(Qt::Key_N) && key(Qt::Key_N, Qt::ShiftModifier));
    EXPECT_EQ(asked, (std::vector<bool>{true, false}));
    for (const auto& [which, held] : {std::pair{Qt::Key_N, Qt::ControlModifier},
                                      {Qt::Key_M, Qt::ShiftModifier},
                                      {Qt::Key_Delete, Qt::ShiftModifier},
                                      {Qt::Key_B, Qt::ShiftModifier},
                                      {Qt::Key_B, Qt::ControlModifier}})
        EXPECT_FALSE(key(which, held)) << which;
    EXPECT_TRUE(key(Qt::Key_B));
    EXPECT_EQ(bandAt(550), colours().background);
    EXPECT_EQ(picture().pixelColor(500, 5), colours().background) << "no strip";
    EXPECT_EQ(tipAt(125, 50), QString());
    key(Qt::Key_M);
    doubleClick(550, 5);
    EXPECT_TRUE(mended.empty()) << "nothing is mended that is not seen";
    waveform.SetSelection(0, 0, 0);
    key(Qt::Key_B);
    EXPECT_EQ(picture(), before);
    waveform.channelCount = 0;
    EXPECT_FALSE(key(Qt::Key_N));
}

TEST_F(WaveformBands, TipsTellOfTheMarkOrElseOfTheStretch) {
    EXPECT_EQ(tipAt(125, 50), QString()) << "nobody tells";
    view.setTips([](int stretch) { return QStringLiteral("stretch %1").arg(stretch); },
                 [](int slip) { return QStringLiteral("slip %1").arg(slip); });
    view.showRows({{}, {5500, 8000}});
    const int top = layout().wave().top();
    const struct {
        int x, y;
        const char* text;
    } cases[] = {{50, 50, "stretch 1"},
                 {199, 200, "stretch 1"},
                 {200, 50, ""},
                 {400, 5, "stretch 2"},
                 {550, top + 2, "slip 0"},
                 {550, 50, ""},
                 {806, 5, "slip 1"},
                 {800, 100, "stretch 3"},
                 {950, 50, ""},
                 {-1, 50, ""},
                 {400, 204, ""}};
    for (const auto& c : cases)
        EXPECT_EQ(tipAt(c.x, c.y), QLatin1String(c.text)) << c.x << " " << c.y;
    scan();
    EXPECT_EQ(tipAt(800, top + 2), QStringLiteral("stretch 3")) << "the marks are forgotten";
    edit();
    EXPECT_EQ(tipAt(800, 100), QString());
    view.showRows({{}, {8000}});
    EXPECT_EQ(at(800, top), colours().background) << "too late for that scan";
}

}  // namespace
}  // namespace tarnwick::widgets
