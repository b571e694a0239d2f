#include "forms/design.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <cmath>

namespace tarnwick::forms {

namespace {

constexpr int kFontPixels = 12;
constexpr int kSmallFontPixels = 11;
constexpr int kTitleIndent = 8;

QColor lineColour(const QPalette& palette) {
    QColor line = palette.color(QPalette::WindowText);
    line.setAlphaF(0.25F);
    return line;
}

}  // namespace

int px(double twips) { return static_cast<int>(std::lround(twips / kTwipsPerPixel)); }

QRect rectOf(const Place& place) {
    return {px(place.left), px(place.top), px(place.width), px(place.height)};
}

void put(QWidget* control, const Place& place) {
    QRect rect = rectOf(place);
    const QSize hint = control->sizeHint();
    if (rect.width() == 0) {
        rect.setWidth(hint.width());
    }
    if (rect.height() == 0) {
        rect.setHeight(hint.height());
    }
    control->setGeometry(rect);
}

QFont uiFont() {
    QFont font;
    font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Nimbus Sans"),
                      QStringLiteral("Arial"), QStringLiteral("DejaVu Sans Condensed")});
    font.setPixelSize(kFontPixels);
    return font;
}

QFont smallFont() {
    QFont font = uiFont();
    font.setPixelSize(kSmallFontPixels);
    return font;
}

QString elementName(const QString& array, int index) {
    return QStringLiteral("%1(%2)").arg(array).arg(index);
}

QString announced(const QString& caption) {
    QString text = caption.trimmed();
    text.remove(u'&');
    while (text.endsWith(u':')) {
        text.chop(1);
    }
    return text.trimmed();
}

void setBackground(QLineEdit* box, const QColor& colour) {
    QPalette palette = box->palette();
    palette.setColor(QPalette::Base, colour);
    palette.setColor(QPalette::Text, Qt::black);
    box->setPalette(palette);
}

void clearBackground(QLineEdit* box) { box->setPalette({}); }

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

void setBold(QWidget* control, bool bold) {
    QFont font = control->font();
    font.setBold(bold);
    control->setFont(font);
}

void assign(QLineEdit* box, const QString& text) {
    if (box->text() == text)
        Q_EMIT box->textChanged(text);
    else
        box->setText(text);
}

QMouseEvent pressOf(const QMouseEvent& doubleClick) {
    return {QEvent::MouseButtonPress,     doubleClick.position(),      doubleClick.scenePosition(),
            doubleClick.globalPosition(), doubleClick.button(),        doubleClick.buttons(),
            doubleClick.modifiers(),      doubleClick.pointingDevice()};
}

void announceValue(QWidget* control, const QString& description) {
    control->setAccessibleName(QString());
    control->setAccessibleDescription(announced(description));
}

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

namespace {

template <typename Control>
Control* name(Control* control, const QString& objectName, const QString& caption,
              const Place& place) {
    control->setObjectName(objectName);
    control->setAccessibleName(announced(caption));
    put(control, place);
    return control;
}

}  // namespace

QLabel* makeLabel(QWidget* parent, const QString& objectName, const QString& caption,
                  const Place& place, Qt::Alignment alignment) {
    auto* label = new QLabel(caption, parent);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(alignment);
    name(label, objectName, caption, place);
    if (place.width == 0) {
        // The hint leaves the trailing blanks out, and they are the gap to the control beside.
        const int width = label->fontMetrics().horizontalAdvance(caption);
        label->resize(std::max(width, label->width()), label->height());
    }
    return label;
}

QPushButton* makeButton(QWidget* parent, const QString& objectName, const QString& caption,
                        const Place& place, const QString& toolTip) {
    auto* button = new CaptionButton(caption, parent);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return name(button, objectName, caption, place);
}

QLineEdit* makeText(QWidget* parent, const QString& objectName, const QString& text,
                    const Place& place, const QString& caption) {
    auto* box = new QLineEdit(text, parent);
    return name(box, objectName, caption, place);
}

QLineEdit* makeReadOut(QWidget* parent, const QString& objectName, const Place& place,
                       const QString& caption) {
    QLineEdit* box = makeText(parent, objectName, {}, place, caption);
    box->setReadOnly(true);
    QObject::connect(box, &QLineEdit::textChanged, box, [box](const QString& text) {
        box->setToolTip(Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text);
    });
    return box;
}

QCheckBox* makeCheck(QWidget* parent, const QString& objectName, const QString& caption,
                     const Place& place, bool on) {
    auto* box = new QCheckBox(caption, parent);
    box->setChecked(on);
    return name(box, objectName, caption, place);
}

QRadioButton* makeOption(QWidget* parent, const QString& objectName, const QString& caption,
                         const Place& place, bool on) {
    auto* option = new QRadioButton(caption, parent);
    option->setChecked(on);
    return name(option, objectName, caption, place);
}

QComboBox* makeCombo(QWidget* parent, const QString& objectName, const QStringList& items,
                     const QString& text, const Place& place, const QString& caption) {
    auto* box = new PlainCombo(parent);
    box->addItems(items);
    box->setCurrentText(text);
    return name(box, objectName, caption, place);
}

QListWidget* makeList(QWidget* parent, const QString& objectName, const Place& place,
                      const QString& caption) {
    return name(new QListWidget(parent), objectName, caption, place);
}

QProgressBar* makeProgress(QWidget* parent, const QString& objectName, const Place& place) {
    auto* bar = new QProgressBar(parent);
    bar->setRange(0, 100);
    bar->setValue(0);
    bar->setTextVisible(false);
    return name(bar, objectName, QStringLiteral("Progress"), place);
}

QGroupBox* makeFrame(QWidget* parent, const QString& objectName, const QString& title,
                     const Place& place) {
    return name(new TitledFrame(title, parent), objectName, title, place);
}

}  // namespace tarnwick::forms
