#include "widgets/waveform_view.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "engine/sound_events.h"
#include "widgets/waveform_colours.h"
#include "widgets/waveform_painter.h"

namespace tarnwick::widgets {

namespace {

constexpr int kPlayHeadPeriodMs = 33;
constexpr double kNotch = 120.0;             // eighths of a degree in one notch of a wheel
constexpr double kLeastTurn = kNotch / 4;    // finer turns would vanish in whole milliseconds
constexpr double kZoomPerNotch = 1.4142136;  // two notches double
constexpr double kScrollPerNotch = 0.1;      // of the view
constexpr double kDragDistance = 3.0;        // pixels that make a press a drag

}  // namespace

WaveformView::WaveformView(engine::Waveform& waveform, QWidget* parent)
    : QWidget(parent), waveform_(waveform), playTimer_(this) {
    setObjectName(QStringLiteral("Waveform"));
    setAccessibleName(QStringLiteral("Waveform"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::IBeamCursor);
    playTimer_.setInterval(kPlayHeadPeriodMs);
    connect(&playTimer_, &QTimer::timeout, this, &WaveformView::followPlayback);
    connect(&waveform_, &engine::Waveform::displayChanged, this, [this] {
        dropPicture();
        followPlayback();
    });
}

void WaveformView::dropPicture() {
    picture_ = {};
    axis_.reset();
    update();
}

void WaveformView::changeEvent(QEvent* event) {
    switch (event->type()) {
        case QEvent::PaletteChange:
        case QEvent::FontChange:
        case QEvent::StyleChange:
            dropPicture();
            break;
        default:
            break;
    }
    QWidget::changeEvent(event);
}

void WaveformView::renderIfStale() {
    const qreal ratio = devicePixelRatioF();
    if (!picture_.isNull() && picture_.size() == size() * ratio && axis_) return;
    const WaveformPainter painter(waveform_, {size(), ratio, palette(), font()});
    picture_ = QPixmap::fromImage(painter.render());
    axis_ = painter.axis();
    area_ = painter.area();
    shownPlayHead_ = playHeadX();
}

TimeAxis WaveformView::axis() const {
    return WaveformPainter(waveform_, {size(), devicePixelRatioF(), palette(), font()}).axis();
}

void WaveformView::paintEvent(QPaintEvent*) {
    renderIfStale();
    QPainter painter(this);
    painter.drawPixmap(0, 0, picture_);  // only what is due: the painter is clipped to it
    const WaveformColours colours(palette());
    painter.setPen(colours.frame);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (!hasSound()) return;

    painter.setClipRect(area_);
    paintSelection(painter);
    if (shownPlayHead_ != kNoPlayHead)
        painter.fillRect(shownPlayHead_, area_.top(), 1, area_.height(), colours.playHead);
}

void WaveformView::paintSelection(QPainter& painter) const {
    qint16 available = 0;
    qint32 begin = 0, end = 0;
    waveform_.GetSelection(available, begin, end);
    if (available != 1) return;
    if (end == -1) end = waveform_.duration();
    // Kept near the area: a far-off edge must not leave the range of a pixel coordinate.
    const auto column = [&](double ms) {
        const double x = std::clamp(axis_->xOf(ms), area_.left() - 10.0, area_.right() + 10.0);
        return static_cast<int>(std::floor(x));
    };
    const WaveformColours colours(palette());
    const int left = column(begin), right = column(end);
    if (begin >= end) {
        painter.fillRect(left, area_.top(), 1, area_.height(), colours.cursor);
        return;
    }
    painter.fillRect(left, area_.top(), std::max(right - left, 1), area_.height(),
                     colours.selection);
    painter.fillRect(left, area_.top(), 1, area_.height(), colours.selectionEdge);
    painter.fillRect(right, area_.top(), 1, area_.height(), colours.selectionEdge);
}

void WaveformView::followPlayback() {
    if (waveform_.playPosition() >= 0) {
        if (!playTimer_.isActive()) playTimer_.start();
    } else {
        playTimer_.stop();
    }
    if (!axis_) return;  // a whole repaint is due anyway
    const int before = std::exchange(shownPlayHead_, playHeadX());
    if (before == shownPlayHead_) return;
    update(playHeadStrip(before));
    update(playHeadStrip(shownPlayHead_));
}

int WaveformView::playHeadX() const {
    const qint32 position = waveform_.playPosition();
    if (position < 0 || !axis_) return kNoPlayHead;
    const double x = std::floor(axis_->xOf(position));
    return x < area_.left() || x > area_.right() ? kNoPlayHead : static_cast<int>(x);
}

QRect WaveformView::playHeadStrip(int x) const {
    return x == kNoPlayHead ? QRect() : QRect(x - 1, area_.top(), 3, area_.height());
}

void WaveformView::mousePressEvent(QMouseEvent* event) {
    if (!hasSound()) return;
    if (event->button() == Qt::RightButton) waveform_.notifyMouse(engine::kMouseClearsSelection);
    if (event->button() != Qt::LeftButton) return;
    pressedAt_ = event->position();
    anchorMs_ = axis().positionAt(event->position().x(), waveform_.duration());
    dragging_ = false;
}

void WaveformView::mouseMoveEvent(QMouseEvent* event) {
    if (!pressedAt_ || !hasSound()) return;
    const double moved = std::abs(event->position().x() - pressedAt_->x());
    if (!dragging_ && moved < kDragDistance) return;
    dragging_ = true;
    selectTo(event->position().x());
}

void WaveformView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !std::exchange(pressedAt_, std::nullopt)) return;
    if (!hasSound()) return;
    if (dragging_)
        selectTo(event->position().x());
    else
        waveform_.SetSelection(1, anchorMs_, anchorMs_);
}

void WaveformView::selectTo(double x) {
    const qint32 ms = axis().positionAt(x, waveform_.duration());
    waveform_.SetSelection(1, std::min(anchorMs_, ms), std::max(anchorMs_, ms));
}

void WaveformView::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (!hasSound()) return;
    QPointF turn = event->angleDelta();
    // Shift turns the wheel sideways; some platforms have done so already.
    if (event->modifiers().testFlag(Qt::ShiftModifier) && turn.x() == 0.0) turn = turn.transposed();
    wheel_ += turn;
    if (std::abs(wheel_.y()) >= kLeastTurn)
        zoomBy(std::exchange(wheel_.ry(), 0.0) / kNotch, event->position().x());
    if (std::abs(wheel_.x()) >= kLeastTurn) scrollBy(std::exchange(wheel_.rx(), 0.0) / kNotch);
}

void WaveformView::zoomBy(double notches, double x) {
    qint32 begin = 0, end = -1;
    waveform_.GetDisplayRange(begin, end);
    const double fixed = axis().msOf(x);
    showRange(zoomed(visibleRange(begin, end, waveform_.duration()),
                     std::pow(kZoomPerNotch, -notches), fixed, waveform_.duration()));
}

void WaveformView::scrollBy(double notches) {
    qint32 begin = 0, end = -1;
    waveform_.GetDisplayRange(begin, end);
    const TimeRange view = visibleRange(begin, end, waveform_.duration());
    showRange(scrolled(view, -notches * kScrollPerNotch * view.width(), waveform_.duration()));
}

void WaveformView::showRange(TimeRange range) {
    const auto begin = static_cast<qint32>(std::nearbyint(range.beginMs));
    // From the width, so that scrolling never widens the view.
    const auto end = begin + static_cast<qint32>(std::nearbyint(range.width()));
    const bool whole = begin == 0 && end == waveform_.duration();
    waveform_.SetDisplayRange(begin, whole ? -1 : end);
}

}  // namespace tarnwick::widgets
