#include "forms/controls.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QWheelEvent>

namespace tarnwick::forms {

namespace {

constexpr int kTitleIndent = 8;

QColor lineColour(const QPalette& palette) {
    QColor line = palette.color(QPalette::WindowText);
    line.setAlphaF(0.25F);
    return line;
}

}  // namespace

QSize CaptionButton::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 16, metrics.height() + 8};
}

void CaptionButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QString caption = option.text.trimmed();
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    QRect area = rect().adjusted(3, 1, -3, -1);
    if (isDown() || isChecked()) {
        area.translate(style()->pixelMetric(QStyle::PM_ButtonShiftHorizontal, &option, this),
                       style()->pixelMetric(QStyle::PM_ButtonShiftVertical, &option, this));
    }
    painter.setPen(option.palette.color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                        QPalette::ButtonText));
    painter.drawText(area, Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic, caption);
}

PlainCombo::PlainCombo(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);  // it would turn a value that begins a listed one into that
    setFocusPolicy(Qt::StrongFocus);
}

void PlainCombo::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

void TitledFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics metrics(font());
    const QString caption = title();
    const int top = caption.isEmpty() ? 0 : metrics.height() / 2;
    const QRect text(kTitleIndent + 3, 0, metrics.horizontalAdvance(caption), metrics.height());
    if (!isFlat()) {
        if (!caption.isEmpty()) {
            const QRegion gap(text.adjusted(-3, 0, 3, 0));
            painter.setClipRegion(QRegion(rect()).subtracted(gap));
        }
        painter.setPen(lineColour(palette()));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, top + 0.5, -0.5, -0.5), 3, 3);
        painter.setClipping(false);
    }
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, caption);
}

void OverlayFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    const int header = QFontMetrics(font()).height() + 10;
    painter.fillRect(QRect(0, 0, width(), header), palette().color(QPalette::Highlight));
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawText(QRect(10, 0, width() - 20, header), Qt::AlignLeft | Qt::AlignVCenter, title());
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace tarnwick::forms
