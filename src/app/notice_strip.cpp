#include "app/notice_strip.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>

#include "app/notice_board.h"
#include "app/notice_list.h"

namespace tarnwick::app {

namespace {

// Marks the strip as something that wants attention, in light and dark.
constexpr char kLook[] =
    "#frNotice { background: palette(tooltip-base); border: 1px solid palette(dark);"
    " border-left: 6px solid #e08a00; }"
    "#lbNotice { color: palette(tooltip-text); }";

QAccessibleInterface* accessibleStrip(const QString&, QObject* object) {
    auto* strip = qobject_cast<NoticeStrip*>(object);
    return strip == nullptr ? nullptr : new QAccessibleWidget(strip, QAccessible::AlertMessage);
}

QString sentenceOf(const QList<NoticeBoard::Entry>& shown) {
    const QString newest = sentencesOf(shown.last());
    return shown.size() == 1 ? newest : u"%1 (%2 more)"_qs.arg(newest).arg(shown.size() - 1);
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
    setObjectName(u"frNotice"_qs);
    lbNotice->setObjectName(u"lbNotice"_qs);
    cbNoticeDetails->setObjectName(u"cbNoticeDetails"_qs);
    cbNoticeClose->setObjectName(u"cbNoticeClose"_qs);
    setStyleSheet(QLatin1String(kLook));
    lbNotice->setTextFormat(Qt::PlainText);
    lbNotice->setWordWrap(true);
    auto* row = new QHBoxLayout(this);
    row->addWidget(lbNotice, 1);
    row->addWidget(cbNoticeDetails);
    row->addWidget(cbNoticeClose);
    hide();
    connect(cbNoticeDetails, &QPushButton::clicked, list_, &NoticeList::open);
    connect(cbNoticeClose, &QPushButton::clicked, this, &NoticeStrip::close);
    auto* key = new QShortcut(Qt::Key_F9, &frame);
    key->setContext(Qt::ApplicationShortcut);
    connect(key, &QShortcut::activated, list_, &NoticeList::open);
    connect(&board_, &NoticeBoard::changed, this, &NoticeStrip::showNewest);
    connect(&board_, &NoticeBoard::told, this, [this](const QString& sentence) {
        if (!frame_.isActiveWindow()) notifyDesktop_(sentence);
    });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget*) {
        if (before != nullptr && before != this && !isAncestorOf(before)) focusBefore_ = before;
        place();
    });
    frame_.installEventFilter(this);
    showNewest();
}

NoticeStrip::~NoticeStrip() = default;

void NoticeStrip::showNewest() {
    if (board_.shown().isEmpty()) return hide();
    lbNotice->setText(sentenceOf(board_.shown()));
    setAccessibleName(lbNotice->text());
    show();
    raise();
    place();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

bool NoticeStrip::covers(const QWidget* control, const QRect& strip) const {
    if (control == nullptr || control->window() != &frame_ || isAncestorOf(control)) return false;
    return strip.intersects(QRect(control->mapTo(&frame_, QPoint()), control->size()));
}

void NoticeStrip::place() {
    if (isHidden()) return;
    const QRect room = frame_.centralWidget()->geometry();
    QRect strip(room.left(), 0, room.width(), layout()->totalHeightForWidth(room.width()));
    strip.moveBottom(room.bottom());
    if (covers(QApplication::focusWidget(), strip)) strip.moveTop(room.top());
    setGeometry(strip);
}

// Gives the focus back if one of the strip's buttons had it.
void NoticeStrip::close() {
    const bool focused = isAncestorOf(QApplication::focusWidget());
    board_.dismiss();
    if (focused && focusBefore_) focusBefore_->setFocus();
}

void NoticeStrip::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return close();
    QFrame::keyPressEvent(event);
}

bool NoticeStrip::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest ||
        event->type() == QEvent::Show)
        QMetaObject::invokeMethod(this, &NoticeStrip::place, Qt::QueuedConnection);
    return QFrame::eventFilter(watched, event);
}

}  // namespace tarnwick::app
