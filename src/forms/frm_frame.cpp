#include "forms/frm_frame.h"

#include <QEvent>
#include <QScrollBar>
#include <algorithm>

#include "forms/fonts.h"
#include "forms/makers.h"

namespace tarnwick::forms {

namespace {

// What a window manager draws around the window, at most in the usual ones.
constexpr int kTitleBar = 38;
constexpr int kBorder = 6;

constexpr int kMargin = 8;  // kept free beside a control that was scrolled to

}  // namespace

frmFrame::frmFrame() {
    setObjectName(QStringLiteral("frmFrame"));
    setFont(uiFont());
    setGeometry(rectOf({120, 450, 13830, 10635}));
    Maker(this).control(NAMED(mdiArea));
    mdiArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea->setBackground(palette().window());
    setCentralWidget(mdiArea);
}

void frmFrame::keepWithin(const QRect& free) {
    const QRect room = free.adjusted(kBorder, kTitleBar, -kBorder, -kBorder);
    QRect place = geometry();
    place.setSize(place.size().boundedTo(room.size()));
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveLeft(std::max(place.left(), room.left()));
    place.moveTop(std::max(place.top(), room.top()));
    setGeometry(place);
}

void frmFrame::reveal(const QWidget& control) {
    const QWidget* view = mdiArea->viewport();
    const QRect place(control.mapTo(view, QPoint()), control.size());
    const auto scroll = [](QScrollBar* bar, int begin, int end, int room) {
        const int forward = std::max(0, end + kMargin - room);
        const int needed = std::min(forward, begin - kMargin);  // its beginning goes first
        if (begin < 0 || needed > 0) bar->setValue(bar->value() + needed);
    };
    scroll(mdiArea->horizontalScrollBar(), place.left(), place.right(), view->width());
    scroll(mdiArea->verticalScrollBar(), place.top(), place.bottom(), view->height());
}

void frmFrame::changeEvent(QEvent* event) {
    // The area keeps a brush of its own, which no palette reaches.
    if (event->type() == QEvent::PaletteChange) mdiArea->setBackground(palette().window());
    QMainWindow::changeEvent(event);
}

}  // namespace tarnwick::forms
