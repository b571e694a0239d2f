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

TEST_F(WaveformViewTest, PaintsTheWaveWhereThePeaksAre) {
    EXPECT_EQ(at(100, 60), colours().wave);
    EXPECT_EQ(at(100, 40), colours().background);  // above half of full scale
    EXPECT_EQ(at(700, 60), colours().background);  // silent there
    EXPECT_EQ(at(700, 100), colours().wave);
    waveform.channelCount = 2;
    waveform.SetDisplayRange(2500, 12500);
    EXPECT_EQ(at(100, 60), colours().wave);
    EXPECT_EQ(at(100, 100), colours().frame) << "between the channels";
    EXPECT_EQ(at(900, 60), colours().outside);
    waveform.settings.setVerticalScale(2.0f);
    waveform.SetSettings(waveform.settings);
    EXPECT_EQ(at(100, 5), colours().wave);
    EXPECT_NE(at(100, 0), colours().clipped) << "drawn past the edge, but not at full scale";
    waveform.swing = 1.0f;
    waveform.tell(DisplayChange::Sound);  // an edit that leaves the duration as it is
    EXPECT_EQ(at(100, 0), colours().clipped);
    waveform.channelCount = 0;
    waveform.tell(DisplayChange::Sound);
    EXPECT_EQ(at(100, 60), colours().outside);
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
        EXPECT_EQ(image.pixelColor(left, row), colours().selectionEdge) << ratio;
        EXPECT_EQ(image.pixelColor(left - 1, row), colours().wave) << ratio;
        EXPECT_EQ(image.pixelColor(right, row), colours().selectionEdge) << ratio;
        EXPECT_EQ(image.pixelColor(right - 1, row), colours().selected(colours().background));
        // Half of the columns are sound, with a sharp edge between two columns.
        const int sound = frame + width / 2;
        EXPECT_EQ(image.pixelColor(sound - 1, row), colours().selected(colours().wave)) << ratio;
        EXPECT_EQ(image.pixelColor(sound + 1, row), colours().selected(colours().background));
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
    const auto ticking = [&] {
        return std::ranges::any_of(view.findChildren<QTimer*>(), &QTimer::isActive);
    };
    waveform.playMs = 7000;
    waveform.isPlaying = true;
    waveform.tell(DisplayChange::Playback);
    EXPECT_TRUE(ticking());
    EXPECT_EQ(at(700, 50), colours().playHead);
    waveform.isPlaying = false;
    waveform.tell(DisplayChange::Playback);
    EXPECT_FALSE(ticking()) << "paused";
    EXPECT_EQ(at(700, 50), colours().playHead);
    waveform.playMs = -1;
    waveform.tell(DisplayChange::Playback);
    EXPECT_EQ(at(700, 50), colours().background);
    waveform.SetSelection(1, 9000, -1);
    EXPECT_EQ(at(999, 50), colours().selectionEdge) << "the end of the sound must be visible";
}

}  // namespace
}  // namespace tarnwick::widgets
