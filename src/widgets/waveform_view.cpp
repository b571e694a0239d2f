#include "widgets/waveform_view.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "engine/sound_events.h"
#include "widgets/waveform_painter.h"
#include "widgets/waveform_scales.h"

namespace tarnwick::widgets {

namespace {

constexpr int kFrameMs = 16;                 // 60 times a second
constexpr double kNotch = 120.0;             // eighths of a degree in one notch of a wheel
constexpr double kLeastTurn = kNotch / 4;    // smaller turns would be lost in rounding to ms
constexpr double kZoomPerNotch = 1.4142136;  // a factor of two for two notches
constexpr double kScrollPerNotch = 0.1;      // of the view
constexpr double kDragScroll = 0.25;         // pixels per frame for each pixel beyond the edge
constexpr double kMostDragScroll = 0.1;      // of the view, per frame

engine::WaveformSettings settingsOf(const engine::Waveform& waveform) {
    engine::WaveformSettings settings;
    waveform.GetSettings(settings);
    return settings;
}

// Sets a widget's painter to device pixels, counted from the one nearest to the widget's corner,
// which with a fractional ratio may lie between two.
void countDevicePixels(QPainter& painter) {
    const QTransform device = painter.deviceTransform();
    const QPoint corner = device.map(QPointF()).toPoint();
    painter.setWorldTransform(QTransform::fromTranslate(corner.x(), corner.y()) *
                              device.inverted());
}

}  // namespace

WaveformView::WaveformView(engine::Waveform& waveform, QWidget* parent)
    : QWidget(parent), waveform_(waveform), layout_(layoutAt(1.0)), colours_(palette()) {
    setObjectName(QStringLiteral("Waveform"));
    setAccessibleName(QStringLiteral("Waveform"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    for (QTimer* timer : {&playTimer_, &dragTimer_}) {
        timer->setTimerType(Qt::PreciseTimer);
        timer->setInterval(kFrameMs);
    }
    connect(&playTimer_, &QTimer::timeout, this, &WaveformView::followPlayback);
    connect(&dragTimer_, &QTimer::timeout, this, &WaveformView::scrollUnderDrag);
    connect(&waveform_, &engine::Waveform::displayChanged, this, &WaveformView::follow);
    describe();
}

void WaveformView::follow(engine::DisplayChange what) {
    using engine::DisplayChange;
    if (!hasSound()) gestures_.drop();
    if (what == DisplayChange::Sound || what == DisplayChange::Settings ||
        (what == DisplayChange::Range && shownRange(waveform_) != view_))
        dropPicture();
    // The marks belong to one scan, and an edit makes them untrue.
    const bool newScan = what == DisplayChange::Silences;
    const bool forgotten = (newScan || waveform_.silences().empty()) && rows_.forget();
    if (newScan || forgotten) redrawRows();
    describe();
    followPlayback();
}

void WaveformView::dropPicture() {
    picture_ = {};
    update();
}

WaveformLayout WaveformView::layoutAt(qreal ratio) const {
    return {size(), ratio, settingsOf(waveform_), font(), rows_.hasStrip()};
}

TimeAxis WaveformView::axis() const {
    return layoutAt(devicePixelRatioF()).logicalAxis(shownRange(waveform_));
}

void WaveformView::renderIfStale(qreal ratio) {
    const WaveformLayout layout = layoutAt(ratio);
    if (!picture_.isNull() && layout == layout_) return;
    layout_ = layout;
    colours_ = WaveformColours(palette());
    view_ = shownRange(waveform_);
    picture_ = renderWaveform(waveform_, layout_, colours_, rows_.shown());
    overlay_ = {waveform_, layout_, layout_.axis(view_)};
}

void WaveformView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    renderIfStale(painter.deviceTransform().m11());
    // With a fractional ratio the widget covers parts of pixels that the picture does not.
    if (layout_.uneven()) painter.fillRect(rect().adjusted(-1, -1, 1, 1), colours_.frame);
    countDevicePixels(painter);
    for (const QRect& due : event->region()) {
        const QRect part = layout_.device(due);
        painter.drawImage(part, picture_, part);
    }
    overlay_.paint(painter, layout_, colours_);
    paintFrame(painter);
}

void WaveformView::paintFrame(QPainter& painter) const {
    const auto border = [&](int width, const QColor& colour) {
        const QRect whole(QPoint(0, 0), layout_.size());
        const QRect inner = whole.adjusted(width, width, -width, -width);
        for (const QRect& side : QRegion(whole) - inner)
            painter.fillRect(side, colour);
    };
    if (hasFocus())
        border(2 * layout_.hair(), colours_.focus);
    else
        border(layout_.hair(), colours_.frame);
}

void WaveformView::updateOverlay() {
    if (picture_.isNull()) return;  // a full repaint is already pending
    const WaveformOverlay now(waveform_, layout_, layout_.axis(view_));
    for (const QRect& changed : now.difference(overlay_, layout_))
        update(layout_.logical(changed));
    overlay_ = now;
}

void WaveformView::followPlayback() {
    if (!waveform_.playing())
        playTimer_.stop();
    else if (!playTimer_.isActive())
        playTimer_.start();
    updateOverlay();
}

void WaveformView::describe() {
    QString text = QStringLiteral("No sound");
    if (hasSound()) {
        const auto time = [](double ms) { return rulerText(static_cast<qint32>(ms), 1); };
        const TimeRange view = shownRange(waveform_);
        text = QStringLiteral("Shows %1 to %2, ").arg(time(view.beginMs), time(view.endMs));
        const auto selected = hand_.stretch();
        if (!selected)
            text += QStringLiteral("nothing selected");
        else if (selected->begin == selected->end)
            text += QStringLiteral("cursor at %1").arg(time(selected->begin));
        else
            text +=
                QStringLiteral("%1 to %2 selected").arg(time(selected->begin), time(selected->end));
    }
    if (text != accessibleDescription()) setAccessibleDescription(text);
}

void WaveformView::showRows(const RowMarks& marks) {
    if (rows_.show(marks)) redrawRows();
}

void WaveformView::showPressedRow(int row) {
    if (rows_.press(row, shownRange(waveform_))) redrawRows();
}

void WaveformView::setTips(std::function<QString(int)> ofStretch,
                           std::function<QString(int)> ofSlip) {
    rows_.setTips(std::move(ofStretch), std::move(ofSlip));
}

void WaveformView::redrawRows() {
    if (underMouse()) QToolTip::hideText();  // it may tell of what is no longer there
    dropPicture();
}

bool WaveformView::showTip(const QPoint& place, const QPoint& onScreen) {
    const auto tip = rows_.tipAt(place, layoutAt(devicePixelRatioF()), shownRange(waveform_));
    if (!tip || tip->text.isEmpty()) return false;
    QToolTip::showText(onScreen, tip->text, this, tip->place);
    return true;
}

// The keys that ask others for something, and B. Returns false if the key is none of these.
bool WaveformView::pressCommandKey(const QKeyEvent& event) {
    const bool shift = event.modifiers() == Qt::ShiftModifier;
    if (!shift && event.modifiers() != Qt::NoModifier) return false;
    const auto ask = [&](auto signal, auto... arguments) {
        if (!event.isAutoRepeat()) (this->*signal)(arguments...);
        return true;
    };
    if (event.key() == Qt::Key_Space && !shift) return ask(&WaveformView::playPauseAsked);
    if (!hasSound()) return false;
    if (event.key() == Qt::Key_N) return ask(&WaveformView::doubtfulRowAsked, !shift);
    if (shift) return false;
    switch (event.key()) {
        case Qt::Key_Delete:
            return ask(&WaveformView::deletionAsked);
        case Qt::Key_Insert:
            return ask(&WaveformView::silenceAsked);
        case Qt::Key_B:
            return ask(&WaveformView::toggleRows);
        case Qt::Key_M: {
            const auto slip = rows_.slipMeant(shownRange(waveform_));
            return !slip || ask(&WaveformView::mendAsked, *slip);
        }
        default:
            return false;
    }
}

void WaveformView::toggleRows() {
    rows_.toggle();
    redrawRows();
}

bool WaveformView::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        if (showTip(help->pos(), help->globalPos())) return true;
    }
    return QWidget::event(event);
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

void WaveformView::mousePressEvent(QMouseEvent* event) {
    if (!hasSound()) return;
    if (event->button() == Qt::RightButton) {
        gestures_.drop();
        waveform_.notifyMouse(engine::kMouseClearsSelection);
    }
    if (event->button() == Qt::LeftButton)
        gestures_.press(event->position().x(), axis(),
                        event->modifiers().testFlag(Qt::ShiftModifier));
}

void WaveformView::mouseMoveEvent(QMouseEvent* event) {
    // The release may have gone elsewhere, such as to a box that opened meanwhile.
    if (!event->buttons().testFlag(Qt::LeftButton)) gestures_.drop();
    if (!gestures_.underway()) return showPointer(event->position().x());
    gestures_.move(event->position().x(), axis());
    watchDrag();
}

void WaveformView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !gestures_.underway()) return;
    gestures_.release(event->position().x(), axis());
    showPointer(event->position().x());
}

void WaveformView::mouseDoubleClickEvent(QMouseEvent* event) {
    std::optional<int> slip;
    if (event->button() == Qt::LeftButton)
        slip =
            rows_.slipAt(event->position(), layoutAt(devicePixelRatioF()), shownRange(waveform_));
    if (!slip) return QWidget::mouseDoubleClickEvent(event);  // the same as a press
    gestures_.drop();
    Q_EMIT mendAsked(*slip);
}

void WaveformView::showPointer(double x) {
    Qt::CursorShape shape = Qt::ArrowCursor;
    if (hasSound()) shape = gestures_.holdsAt(x, axis()) ? Qt::SizeHorCursor : Qt::IBeamCursor;
    if (cursor().shape() != shape) setCursor(shape);
}

void WaveformView::watchDrag() {
    if (gestures_.beyond(axis()) == 0.0) {
        dragTimer_.stop();
        scrollDebt_ = 0.0;
    } else if (!dragTimer_.isActive()) {
        dragTimer_.start();
    }
}

void WaveformView::scrollUnderDrag() {
    const TimeAxis now = axis();
    const double most = kMostDragScroll * now.view().width();
    scrollDebt_ += std::clamp(gestures_.beyond(now) * kDragScroll * now.msPerPixel(), -most, most);
    const double whole = std::trunc(scrollDebt_);
    scrollDebt_ -= whole;
    if (whole != 0.0) navigation_.scroll(whole);
    gestures_.follow(axis());
    watchDrag();
}

void WaveformView::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (!hasSound()) return;
    QPointF turn = event->angleDelta();
    // Shift makes the wheel scroll sideways; some platforms already swap the axes themselves.
    if (event->modifiers().testFlag(Qt::ShiftModifier) && turn.x() == 0.0) turn = turn.transposed();
    wheel_ += turn;
    if (std::abs(wheel_.y()) >= kLeastTurn)
        navigation_.zoom(std::pow(kZoomPerNotch, -std::exchange(wheel_.ry(), 0.0) / kNotch),
                         axis().msOf(event->position().x()));
    if (std::abs(wheel_.x()) >= kLeastTurn)
        navigation_.scrollByViews(-kScrollPerNotch * std::exchange(wheel_.rx(), 0.0) / kNotch);
}

void WaveformView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) gestures_.drop();
    if (!pressCommandKey(*event) && !keys_.press(*event, axis().msPerPixel()))
        QWidget::keyPressEvent(event);
}

}  // namespace tarnwick::widgets
