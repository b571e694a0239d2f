#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <functional>

#include "engine/waveform.h"
#include "widgets/selection_hand.h"
#include "widgets/waveform_gestures.h"
#include "widgets/waveform_keys.h"
#include "widgets/waveform_layout.h"
#include "widgets/waveform_navigation.h"
#include "widgets/waveform_overlay.h"
#include "widgets/waveform_rows.h"

namespace tarnwick::widgets {

// The picture of a sound: paints what an engine::Waveform shows and turns mouse and keys into calls
// on it. See WaveformGestures for the left button and WaveformKeys for the keys. The right button
// asks for the selection to be cleared, the wheel zooms at the pointer, Shift and wheel (or a
// sideways wheel) scroll, and dragging a selection beyond an edge keeps scrolling. B switches what
// is shown of the last scan off and on. Holds no state of the sound itself, but what it is told
// about the rows of that scan. UI thread.
class WaveformView : public QWidget {
    Q_OBJECT

  public:
    // `waveform` must outlive the view.
    explicit WaveformView(engine::Waveform& waveform, QWidget* parent = nullptr);

    // Moves the play head to the present play position. The view does this by itself once per frame
    // while the sound plays.
    void followPlayback();

    // Call after each rebuild of the list, and after that for the pressed row, from 1; 0: none. The
    // view forgets both when an edit makes the silences untrue and at each new scan.
    void showRows(const RowMarks& marks);
    void showPressedRow(int row);
    // The texts for hovering, plain or rich, of a stretch (from 1) and of a slip (index into
    // RowMarks::slipsMs). An empty text shows none.
    void setTips(std::function<QString(int stretch)> ofStretch,
                 std::function<QString(int slip)> ofSlip);

  Q_SIGNALS:
    void playPauseAsked();                // the space key
    void deletionAsked();                 // Del
    void silenceAsked();                  // Ins
    void doubtfulRowAsked(bool forward);  // N, backward with Shift
    // A double click on a mark, or M for the mark of the pressed row if it is in view, else for
    // that nearest to the middle of the view. `slip` is an index into RowMarks::slipsMs.
    void mendAsked(int slip);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void follow(engine::DisplayChange what);
    void dropPicture();
    void renderIfStale(qreal ratio);
    void updateOverlay();
    void paintFrame(QPainter& painter) const;
    void redrawRows();
    bool showTip(const QPoint& place, const QPoint& onScreen);
    bool pressCommandKey(const QKeyEvent& event);
    void toggleRows();
    void scrollUnderDrag();
    void watchDrag();
    void showPointer(double x);
    void describe();
    WaveformLayout layoutAt(qreal ratio) const;
    TimeAxis axis() const;  // of the present view, in logical pixels
    bool hasSound() const { return waveform_.channels() > 0; }

    engine::Waveform& waveform_;
    SelectionHand hand_{waveform_};
    WaveformNavigation navigation_{waveform_};
    WaveformGestures gestures_{waveform_, hand_};
    WaveformKeys keys_{waveform_, hand_, navigation_};
    WaveformRows rows_{waveform_};
    QTimer playTimer_{this};
    QTimer dragTimer_{this};
    QPointF wheel_;            // turns too small for a step so far, in eighths of a degree
    double scrollDebt_ = 0.0;  // ms of a drag not scrolled yet

    // The picture, null if stale, and what it was rendered for.
    QImage picture_;
    WaveformLayout layout_;
    WaveformColours colours_;
    TimeRange view_{};
    WaveformOverlay overlay_;  // as painted, or with the repaint pending
};

}  // namespace tarnwick::widgets
