#include "app/notice_strip.h"

#include <QAbstractScrollArea>
#include <QAccessibleWidget>
#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>

#include "app/notice_board.h"
#include "app/notice_list.h"

namespace tarnwick::app {

namespace {

constexpr int kBar = 6;  // pixels, the coloured bar at the left edge
constexpr QRgb kBarColour = 0xffe08a00;

QAccessibleInterface* accessibleStrip(const QString&, QObject* object) {
    auto* strip = qobject_cast<NoticeStrip*>(object);
    return strip == nullptr ? nullptr : new QAccessibleWidget(strip, QAccessible::AlertMessage);
}

QString sentenceOf(const QList<NoticeBoard::Entry>& shown) {
    const QString newest = sentencesOf(shown.last());
    if (shown.size() == 1) return newest;
    return u"%1 (%2 more)"_qs.arg(newest, QString::number(shown.size() - 1));
}

}  // namespace

NoticeStrip::NoticeStrip(QMainWindow& frame, NoticeBoard& board,
                         std::function<void(const QString& sentence)> notifyDesktop)
    : QFrame(&frame),
      frame_(frame),
      board_(board),
      notifyDesktop_(std::move(notifyDesktop)),
      list_(new NoticeList(&frame, board)),
      lbNotice(new QLabel(this)),
      cbNoticeDetails(new QPushButton(u"Details"_qs, this)),
      cbNoticeClose(new QPushButton(u"Dismiss"_qs, this)) {
    QAccessible::installFactory(accessibleStrip);
    makeLook();
    hide();
    connect(cbNoticeDetails, &QPushButton::clicked, list_, &NoticeList::open);
    connect(cbNoticeClose, &QPushButton::clicked, &board_, &NoticeBoard::dismiss);
    auto* key = new QShortcut(Qt::Key_F9, &frame);
    key->setContext(Qt::ApplicationShortcut);
    connect(key, &QShortcut::activated, list_, &NoticeList::open);
    connect(&board_, &NoticeBoard::changed, this, &NoticeStrip::showNewest);
    connect(&board_, &NoticeBoard::told, this, [this](const QString& sentence) {
        announce();
        if (!frame_.isActiveWindow()) notifyDesktop_(sentence);
    });
    followFrame();
    showNewest();
}

NoticeStrip::~NoticeStrip() = default;

// The colours of tool tips make the strip stand out in light and dark schemes.
void NoticeStrip::makeLook() {
    setObjectName(u"frNotice"_qs);
    lbNotice->setObjectName(u"lbNotice"_qs);
    cbNoticeDetails->setObjectName(u"cbNoticeDetails"_qs);
    cbNoticeClose->setObjectName(u"cbNoticeClose"_qs);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    lbNotice->setForegroundRole(QPalette::ToolTipText);
    lbNotice->setTextFormat(Qt::PlainText);
    lbNotice->setWordWrap(true);
    auto* row = new QHBoxLayout(this);
    QMargins margins = row->contentsMargins();
    margins.setLeft(margins.left() + kBar);
    row->setContentsMargins(margins);
    row->addWidget(lbNotice, 1);
    row->addWidget(cbNoticeDetails);
    row->addWidget(cbNoticeClose);
}

// Places the strip again when the frame changes, its contents scroll or the focus moves.
void NoticeStrip::followFrame() {
    const auto* area = qobject_cast<QAbstractScrollArea*>(frame_.centralWidget());
    view_ = area->viewport();
    for (QWidget* resized : std::initializer_list<QWidget*>{&frame_, view_})
        resized->installEventFilter(this);
    for (const QScrollBar* bar : {area->horizontalScrollBar(), area->verticalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, this, &NoticeStrip::placeSoon);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget*) {
        if (before != nullptr && before != this && !isAncestorOf(before)) focusBefore_ = before;
        placeSoon();
    });
}

void NoticeStrip::showNewest() {
    if (board_.shown().isEmpty()) return takeAway();
    lbNotice->setText(sentenceOf(board_.shown()));
    setAccessibleName(lbNotice->text());
    show();
    raise();
    place();
}

// Tells screen readers. Those that ignore alerts react to a control that is shown.
void NoticeStrip::announce() {
    for (const QAccessible::Event type : {QAccessible::Alert, QAccessible::ObjectShow}) {
        QAccessibleEvent event(this, type);
        QAccessible::updateAccessibility(&event);
    }
}

void NoticeStrip::takeAway() {
    const bool focused = isAncestorOf(QApplication::focusWidget());
    hide();
    if (focused && focusBefore_ && focusBefore_->isVisible()) focusBefore_->setFocus();
}

bool NoticeStrip::covers(const QWidget* control, const QRect& strip) const {
    if (control == nullptr || control->window() != &frame_ || isAncestorOf(control)) return false;
    return strip.intersects(QRect(control->mapTo(&frame_, QPoint()), control->size()));
}

void NoticeStrip::place() {
    if (isHidden()) return;
    const QRect room(view_->mapTo(&frame_, QPoint()), view_->size());
    QRect strip(room.left(), 0, room.width(), layout()->totalHeightForWidth(room.width()));
    strip.moveBottom(room.bottom());
    if (covers(QApplication::focusWidget(), strip)) strip.moveTop(room.top());
    setGeometry(strip);
}

// Queued, because the window may still scroll to the control that has just got the focus.
void NoticeStrip::placeSoon() {
    QMetaObject::invokeMethod(this, &NoticeStrip::place, Qt::QueuedConnection);
}

void NoticeStrip::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return board_.dismiss();
    QFrame::keyPressEvent(event);
}

void NoticeStrip::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    QPainter(this).fillRect(0, 0, kBar, height(), QColor(kBarColour));
}

bool NoticeStrip::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest ||
        event->type() == QEvent::Show)
        placeSoon();
    return QFrame::eventFilter(watched, event);
}

}  // namespace tarnwick::app
