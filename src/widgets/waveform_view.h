#pragma once

#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <optional>

#include "engine/waveform.h"
#include "widgets/waveform_geometry.h"

namespace tarnwick::widgets {

// The picture of a sound: paints what an engine::Waveform shows and turns the mouse into calls on
// it. A click sets the cursor, a drag selects, the right button asks for the selection to be
// cleared, the wheel zooms at the pointer, Shift and wheel (or a sideways wheel) scroll. Holds no
// state of the sound itself. UI thread.
class WaveformView : public QWidget {
    Q_OBJECT

  public:
    // `waveform` outlives the view.
    explicit WaveformView(engine::Waveform& waveform, QWidget* parent = nullptr);

    // Looks at the play position now and, while there is one, 30 times a second. The view does this
    // by itself when the waveform's display changes; call it when playback starts without that.
    void followPlayback();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void dropPicture();
    void renderIfStale();
    void paintSelection(QPainter& painter) const;
    void selectTo(double x);
    void zoomBy(double notches, double x);
    void scrollBy(double notches);
    void showRange(TimeRange range);
    TimeAxis axis() const;
    bool hasSound() const { return waveform_.channels() > 0; }
    int playHeadX() const;  // kNoPlayHead when nothing plays
    QRect playHeadStrip(int x) const;

    static constexpr int kNoPlayHead = -1000000;

    engine::Waveform& waveform_;
    QPixmap picture_;  // null when stale
    std::optional<TimeAxis> axis_;
    QRect area_;
    QTimer playTimer_;
    int shownPlayHead_ = kNoPlayHead;  // moved by the timer only, so that no strip is left behind
    std::optional<QPointF> pressedAt_;
    qint32 anchorMs_ = 0;
    bool dragging_ = false;
    QPointF wheel_;  // turns that did not yet make a step, in eighths of a degree
};

}  // namespace tarnwick::widgets
