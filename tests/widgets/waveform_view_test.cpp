#include "waveform_desk.h"

namespace tarnwick::widgets {
namespace {

using engine::DisplayChange;

// Records which area of a visible view is repainted.
class PaintedArea : public QObject {
  public:
    explicit PaintedArea(QWidget& view) { view.installEventFilter(this); }
    QRect take() {
        QCoreApplication::processEvents();
        return std::exchange(area_, {}).boundingRect();
    }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) area_ += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

  private:
    QRegion area_;
};

using WaveformViewTest = WaveformDesk;

// Whether there is a text in that colour, as far as its thin lines reach it.
bool hasText(const QImage& image, const QColor& ground, const QColor& colour) {
    double most = 1.0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            most = std::max(most, contrast(image.pixelColor(x, y), ground));
    EXPECT_LE(most, contrast(colour, ground));
    return most > 2.0;
}

TEST_F(WaveformViewTest, PaintsTheWaveWhereThePeaksAre) {
    EXPECT_EQ(seen({{100, 60}, {100, 40}, {700, 60}, {700, 100}}), "#..#")
        << "above half of full scale it is empty, and silent in the second half";
    waveform.channelCount = 2;
    waveform.SetDisplayRange(2500, 12500);
    EXPECT_EQ(seen({{100, 60}, {100, 100}, {900, 60}}), "#+ ") << "a frame between the channels";
    waveform.settings.setVerticalScale(2.0f);
    waveform.SetSettings(waveform.settings);
    EXPECT_EQ(seen({{100, 5}, {100, 0}}), "##") << "past the edge, but not at full scale";
    waveform.swing = 1.0f;
    waveform.tell(DisplayChange::Sound);  // an edit that leaves the duration as it is
    EXPECT_EQ(at(100, 0), colours().clipped);
    waveform.channelCount = 0;
    waveform.tell(DisplayChange::Sound);
    EXPECT_EQ(at(100, 60), colours().outside);
}

TEST_F(WaveformViewTest, PaintsEachColumnFromItsLowestToItsHighestSample) {
    waveform.rate = 4;  // frames a second: each second is a column of four
    waveform.durationMs = 12000;
    constexpr float kFull = 32767.0f / 32768.0f;
    waveform.samples = {
        .25f, .25f,  .25f, .25f, .5f, .5f, .5f,    .5f, .5f, .25f, 0, 0, -.5f,  0,     0,     -.5f,
        0,    kFull, 0,    0,    0,   0,   -kFull, 0,   0,   0,    0, 0, -.75f, -.75f, -.75f, -.75f,
        .75f, .75f,  .75f, .75f, 0,   0,   0,      0,   0,   0,    0, 0, 0,     0,     0,     0};
    waveform.SetDisplayRange(-1000, 15000);
    waveform.SetSelection(1, 3000, 6000);
    waveform.playMs = 9000;
    view.resize(16 + 2 * kFrame, 9 + 2 * kFrame);
    EXPECT_EQ(drawn(), R"(
++++++++++++++++++++
+__________________+
+_....|*:|..!..   _+
+_....|*:|.#!..   _+
+_..##|%:|.#!..   _+
+_.###|%:|.#!..   _+
+_-#-#|%%|##!##---_+
+_....|:%|##!..   _+
+_....|:%|##!..   _+
+_....|:*|##!..   _+
+_....|:*|..!..   _+
+__________________+
++++++++++++++++++++
)");
    waveform.SetSelection(1, 11000, 11000);
    waveform.playMs = -1;
    waveform.channelCount = 2;
    waveform.tell(DisplayChange::Sound);
    EXPECT_EQ(drawn(2.0), R"(
++++++++++++++++++++++++++++++++++++++++
++++++++++++++++++++++++++++++++++++++++
++____________________________________++
++____________________________________++
++__..........!.............cc      __++
++__..........!.......###...cc      __++
++__....###...!.......###...cc      __++
++__..######..!.......#.#...cc      __++
++__--##---##########-#-####cc------__++
++__-------###-##!###-#-####cc------__++
++__........##...!..#.#.....cc      __++
++__.............!..###.....cc      __++
++__.............!..##......cc      __++
++__++++++++++!+++++++++++++cc++++++__++
++__++++++++++!+++++++###+++cc++++++__++
++__....###...!.......###...cc      __++
++__..######..!.......#.#...cc      __++
++__--##---##########-#-####cc------__++
++__-------###-##!###-#-####cc------__++
++__........##...!..#.#.....cc      __++
++__.............!..###.....cc      __++
++__.............!..##......cc      __++
++____________________________________++
++____________________________________++
++++++++++++++++++++++++++++++++++++++++
++++++++++++++++++++++++++++++++++++++++
)");
}

TEST_F(WaveformViewTest, IsExactToTheDevicePixelAtAnyDensityInLightAndDark) {
    waveform.SetSelection(1, 2500, 7500);
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        if (ratio == 1.5) {
            QPalette dark(QColor(50, 50, 50), QColor(25, 25, 25));
            dark.setColor(QPalette::Text, Qt::white);
            view.setPalette(dark);
        }
        const QImage image = picture(ratio);
        const int frame = kFrame * std::max(1, int(ratio));
        const int width = image.width() - 2 * frame, row = image.height() * 3 / 10;
        const int left = frame + width / 4, right = frame + width * 3 / 4;
        const auto at = [&](int x) { return letterOf(image.pixelColor(x, row)); };
        // Half of the columns are sound, with a sharp edge between two columns.
        const int sound = frame + width / 2;
        EXPECT_EQ((std::string{at(left - 1), at(left), at(sound - 1), at(sound + 1), at(right - 1),
                               at(right)}),
                  "#|%::|")
            << ratio;
    }
}

TEST_F(WaveformViewTest, DistantSamplesAreJoinedByALineWithDots) {
    waveform.samples = {0.0f, 0.0f, 0.5f, -0.5f, 1.0f, 0.0f};
    waveform.SetDisplayRange(0, 10);  // 12.5 pixels between samples
    for (const int ratio : {1, 2}) {
        const QImage image = picture(ratio);
        const auto pixel = [&](double sample, double level) {
            const double x = kFrame + sample * 12.5, y = kFrame + 100.5 - 100 * level;
            return image.pixelColor(int(x * ratio), int(y * ratio));
        };
        EXPECT_EQ(pixel(2, 0.5), colours().wave) << "a dot";
        EXPECT_EQ(pixel(2.5, 0.5), colours().background);
        EXPECT_GT(contrast(pixel(2.5, 0.0), colours().background), 2.0) << "the line between two";
        EXPECT_EQ(pixel(4, 1.0), colours().clipped);
    }
    waveform.rate = 2000;
    waveform.durationMs = 5;
    waveform.samples = {0, 0, 0, .75f, -.75f, -.75f, 32767.0f / 32768.0f, .5f, -1, .5f, 0};
    waveform.SetDisplayRange(-1, 4);
    view.resize(30 + 2 * kFrame, 13 + 2 * kFrame);
    EXPECT_EQ(drawn(), R"(
++++++++++++++++++++++++++++++++++
+________________________________+
+_.......................xx....._+
+_.......................xxx...._+
+_..............##.......x.xx..._+
+_.............xx#......xx..xx.._+
+_.............x.xx.....xx...x.._+
+_............x..xx.....x....x.._+
+_-----x######x.-x#x---xx.---xx-_+
+_................xx...xx.....x._+
+_................xx...x......x._+
+_.................#...x......xx_+
+_.................x#x#x.......x_+
+_..................xxx........x_+
+_.............................x_+
+________________________________+
++++++++++++++++++++++++++++++++++
)") << "too near for dots";
    waveform.SetDisplayRange(1, 6);
    view.resize(40 + 2 * kFrame, 13 + 2 * kFrame);
    EXPECT_EQ(drawn(), R"(
++++++++++++++++++++++++++++++++++++++++++++
+__________________________________________+
+_...xx.........x!!x..............        _+
+_..x##x........x!!x..............        _+
+_..x##x.........x..x##......##...        _+
+_..xxx.........xx..x##x....x##x..        _+
+_.xx.xx........#....##x....x##x...       _+
+_#x...x.......xx.....xx....xx..x##x      _+
+_#x---xx-----.xx-----xx.--.xx--x##x------_+
+_#.....x......x.......xx..xx....##x      _+
+_......xx....xx.......xx..xx......       _+
+_.......xx..xx.........x..x......        _+
+_......x##xx##x........xxxx......        _+
+_......x##xx##x........x!!x......        _+
+_.......xx..xx.........x!!x......        _+
+__________________________________________+
++++++++++++++++++++++++++++++++++++++++++++
)");
}

TEST_F(WaveformViewTest, TheRulerHasMarksAtRoundTimesOfTheSound) {
    waveform.settings.setByteAt(engine::WaveformSettings::kHideRuler, 0);
    waveform.durationMs = 8000;
    waveform.rate = 1000;
    const WaveformLayout layout(view.size(), 1.0, waveform.settings, view.font());
    const QRect ruler = layout.ruler();
    const struct {
        qint32 begin, end, minor, major;
    } cases[] = {{-1990, 8010, 100, 1000}, {1050, 11050, 100, 1000}, {7801, 8301, 5, 50}};
    for (const auto& c : cases) {
        waveform.SetDisplayRange(c.begin, c.end);
        const QImage image = picture();
        Numbers small, large, expected, among;
        for (int x = 0; x < 1000; ++x) {
            const auto marked = [&](int y) {
                return image.pixelColor(x + kFrame, ruler.top() + y) == colours().ruler;
            };
            if (marked(1)) small.push_back(x);
            if (marked(ruler.height() / 4 + 1)) large.push_back(x);
            EXPECT_EQ(image.pixelColor(x + kFrame, ruler.top()),
                      small.empty() || small.back() != x ? colours().frame : colours().ruler);
        }
        for (qint32 ms = 0; ms <= 8000; ms += c.minor) {
            const int x = (ms - c.begin) * 1000 / (c.end - c.begin);
            if (ms < c.begin || x >= 1000) continue;
            expected.push_back(x);
            if (ms % c.major == 0) among.push_back(x);
        }
        EXPECT_EQ(small, expected);
        EXPECT_EQ(large, among);
        const QRect text(among.at(0) + kFrame + 4, ruler.bottom() - layout.pixels(8), 25, 6);
        EXPECT_TRUE(hasText(image.copy(text), colours().scaleGround, colours().ruler));
    }
}

TEST_F(WaveformViewTest, LevelsHaveAMarkAndATextAtTheirHeight) {
    waveform.settings.setByteAt(engine::WaveformSettings::kHideLevels, 0);
    const QColor ink = colours().ruler, ground = colours().scaleGround;
    struct Text {
        int first, last;  // rows from the top of the wave
        int left;
    };
    Numbers marks;  // rows
    std::vector<Text> texts;
    const auto look = [&](float scale, int height) {
        waveform.settings.setVerticalScale(scale);
        view.resize(200, height + 2 * kFrame);
        waveform.tell(DisplayChange::Settings);
        const QImage image = picture();
        const WaveformLayout layout(view.size(), 1.0, waveform.settings, view.font());
        const QRect place = layout.levels();
        marks.clear();
        texts.clear();
        bool inText = false;
        for (int y = 0; y < height; ++y) {
            const auto at = [&](int x) { return image.pixelColor(x, y + kFrame); };
            if (at(place.right() - 4) == ink) {
                marks.push_back(y);
                EXPECT_TRUE(at(place.right() - 1) == ink && at(place.right() - 5) == ground);
            }
            EXPECT_EQ(at(place.right()), colours().frame);
            int left = place.left();
            while (left < place.right() - 5 && at(left) == ground)
                ++left;
            const bool text = left < place.right() - 5;
            if (text && !inText) texts.push_back({y, y, left});
            if (text) texts.back() = {texts.back().first, y, std::min(left, texts.back().left)};
            inText = text;
        }
        EXPECT_EQ(marks.size(), texts.size()) << "none meets another";
        const QRect left = place.adjusted(0, 0, -6, 0);
        EXPECT_EQ(hasText(image.copy(left), ground, ink), !texts.empty());
        const int line = QFontMetrics(layout.font()).ascent();
        for (std::size_t i = 0; i < std::min(marks.size(), texts.size()); ++i) {
            const int middle = (texts[i].first + texts[i].last) / 2;
            const int toEdge =
                std::min(marks[i] % (height / 2), height / 2 - marks[i] % (height / 2));
            EXPECT_NEAR(middle, marks[i], toEdge < line / 2 ? line / 2 + 2 : 3) << height;
            EXPECT_TRUE(texts[i].first > 0 && texts[i].last < height - 1);
        }
    };
    waveform.channelCount = 2;
    for (const auto& [scale, expected] :
         {std::pair{1.0f, Numbers{400, 283, 200, 142, 100, 50, 25}},  // 0 to 24 dB down
          {16.0f, Numbers{202, 101, 51, 25}}}) {                      // 30 to 48
        look(scale, 1602);
        Numbers rows[4];  // of both halves of both channels, from the middle
        int zeros = 0;
        for (const int row : marks) {
            const int away = row % 801 - 400;
            if (std::abs(away) >= 20) rows[row / 801 * 2 + (away > 0)].push_back(std::abs(away));
            zeros += away == 0;
        }
        EXPECT_EQ(zeros, 2);
        if (scale == 1.0f) {
            EXPECT_GT(texts.at(0).left, texts.at(1).left + 3) << "0 has no sign";
        }
        std::ranges::reverse(rows[1]), std::ranges::reverse(rows[3]);
        for (const Numbers& half : rows)
            EXPECT_EQ(half, expected);
    }
    look(1.0f, 130);
    EXPECT_GE(marks.size(), 6u) << "the ends and the middle of both";
    look(1.0f, 14);
    EXPECT_EQ(marks, Numbers()) << "no room";
}

TEST_F(WaveformViewTest, ScalesStandOutsideTheWaveAndAreShownUnlessHidden) {
    waveform.swing = 1.0f;
    waveform.settings = {};
    waveform.settings.setVerticalScale(1.0f);
    waveform.SetSettings(waveform.settings);
    for (const double ratio : {1.0, 2.0}) {
        const QImage image = picture(ratio);
        const auto colourAt = [&](int x, int y) {
            return image.pixelColor(int(x * ratio), int(y * ratio));
        };
        EXPECT_EQ(colourAt(60, 20), colours().wave);
        for (const QPoint& beside : {QPoint(8, 198), QPoint(5, 20), QPoint(500, 201)})
            EXPECT_EQ(colourAt(beside.x(), beside.y()), colours().scaleGround) << beside.x();
        EXPECT_EQ(colourAt(998, 190), colours().scaleGround)
            << "a text that does not fit must be left out";
    }
    press(0);
    release(0);
    EXPECT_EQ(waveform.selectionBegin, 0) << "left of the wave";
}

TEST_F(WaveformViewTest, OnlyChangedAreasAreRepainted) {
    view.show();
    PaintedArea painted(view);
    painted.take();
    waveform.SetSelection(1, 2000, 6000);
    EXPECT_LE(painted.take().width(), 402);
    const int renderings = waveform.renderings;
    const struct {
        const char* what;
        std::function<void()> change;
        int left, width;
    } cases[] = {
        {"the right edge", [&] { waveform.SetSelection(1, 2000, 6500); }, 600, 51},
        {"the left edge", [&] { waveform.SetSelection(1, 1900, 6500); }, 190, 11},
        {"to a cursor", [&] { waveform.SetSelection(1, 3000, 3000); }, 190, 461},
        {"to less than a pixel", [&] { waveform.SetSelection(1, 3000, 3001); }, 300, 1},
        {"back", [&] { waveform.SetSelection(1, 3000, 3000); }, 300, 1},
        {"the cursor gone", [&] { waveform.SetSelection(0, 0, 0); }, 300, 1},
        {"nothing new", [&] { waveform.SetDisplayRange(0, -1); }, -kFrame, 0},
        {"play head comes", [&] { waveform.playMs = 7000, view.followPlayback(); }, 700, 1},
        {"play head moves on", [&] { waveform.playMs = 7021.5, view.followPlayback(); }, 700, 3},
        {"play head stands", [&] { waveform.playMs = 7021.9, view.followPlayback(); }, -kFrame, 0},
        {"play head goes", [&] { waveform.playMs = -1, view.followPlayback(); }, 702, 1}};
    for (const auto& c : cases) {
        c.change();
        const QRect area = painted.take();
        EXPECT_EQ(area.left(), c.width ? c.left + kFrame : 0) << c.what;
        EXPECT_EQ(area.width(), c.width) << c.what;
    }
    EXPECT_EQ(waveform.renderings, renderings) << "the wave itself must not be drawn again";
    waveform.SetDisplayRange(0, 5000);
    EXPECT_EQ(painted.take(), view.rect());
    EXPECT_GT(waveform.renderings, renderings);
}

TEST_F(WaveformViewTest, PlayHeadMovesByATimerOnlyWhileTheSoundPlays) {
    picture();
    waveform.playMs = 0;
    waveform.tell(DisplayChange::Playback);
    EXPECT_EQ(at(0, 50), colours().playHead);
    waveform.playMs = 7000;
    waveform.isPlaying = true;
    waveform.tell(DisplayChange::Playback);
    ASSERT_TRUE(ticking());
    EXPECT_EQ(at(700, 50), colours().playHead);
    waveform.playMs = 7100;
    QMetaObject::invokeMethod(ticking(), "timeout");
    EXPECT_EQ(at(710, 50), colours().playHead);
    waveform.playMs = 7000;
    waveform.isPlaying = false;
    waveform.tell(DisplayChange::Playback);
    EXPECT_FALSE(ticking()) << "paused";
    EXPECT_EQ(at(700, 50), colours().playHead);
    waveform.playMs = -1;
    waveform.tell(DisplayChange::Playback);
    EXPECT_EQ(at(700, 50), colours().background);
    waveform.SetSelection(1, 9000, -1);
    EXPECT_EQ(at(999, 50), colours().selectionEdge) << "the end of the sound is seen";
    waveform.SetSelection(1, 9000, 9000);
    EXPECT_EQ(seen({{900, 50}, {-kFrame, 50}, {-1, 50}}), "c+_");
    view.show();
    view.activateWindow();
    view.setFocus();
    ASSERT_TRUE(test::waitUntil([&] { return view.hasFocus(); }, 2000));
    for (const int x : {-kFrame, -1})
        EXPECT_EQ(at(x, 50), colours().focus);
    EXPECT_NE(at(0, 50), colours().focus);
    waveform.SetSelection(1, 0, 10000);
    waveform.SetDisplayRange(7000, 7010);
    EXPECT_EQ(seen({{0, 50}, {10, 50}, {990, 50}, {999, 50}}), "::::") << "no edge is near";
}

}  // namespace
}  // namespace tarnwick::widgets
