#include "forms/makers.h"

#include <algorithm>

#include "forms/controls.h"
#include "forms/fonts.h"

namespace tarnwick::forms {

namespace {

constexpr int kTimerMs = 100;
constexpr double kChildWidth = 13750, kChildHeight = 10250;

}  // namespace

Made<QLabel> Maker::label(const Named<QLabel*>& named, const QString& caption, const Place& place,
                          Qt::Alignment alignment) const {
    auto* label = new QLabel(caption, parent_);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(alignment);
    const auto made = add(named, label, caption, place);
    if (place.width == 0) {
        // The hint leaves the trailing blanks out, and they are the gap to the control beside.
        const int width = label->fontMetrics().horizontalAdvance(caption);
        label->resize(std::max(width, label->width()), label->height());
    }
    return made;
}

Made<QPushButton> Maker::button(const Named<QPushButton*>& named, const QString& caption,
                                const Place& place, const QString& toolTip) const {
    auto* button = new CaptionButton(caption, parent_);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return add(named, button, caption, place);
}

Made<QLineEdit> Maker::text(const Named<QLineEdit*>& named, const QString& caption,
                            const Place& place, const QString& text) const {
    return add(named, new QLineEdit(text, parent_), caption, place);
}

Made<QLineEdit> Maker::readOut(const Named<QLineEdit*>& named, const QString& caption,
                               const Place& place) const {
    const auto made = text(named, caption, place).readOnly();
    QLineEdit* box = named.member;
    QObject::connect(box, &QLineEdit::textChanged, box, [box](const QString& text) {
        box->setToolTip(Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text);
    });
    return made;
}

Made<QCheckBox> Maker::check(const Named<QCheckBox*>& named, const QString& caption,
                             const Place& place, bool on) const {
    auto* box = new QCheckBox(caption, parent_);
    box->setChecked(on);
    return add(named, box, caption, place);
}

Made<QRadioButton> Maker::option(const Named<QRadioButton*>& named, const QString& caption,
                                 const Place& place, bool on) const {
    auto* option = new QRadioButton(caption, parent_);
    option->setChecked(on);
    return add(named, option, caption, place);
}

Made<QComboBox> Maker::combo(const Named<QComboBox*>& named, const QString& caption,
                             const Place& place, const QString& text,
                             const QStringList& items) const {
    auto* box = new PlainCombo(parent_);
    box->addItems(items);
    box->setCurrentText(text);
    return add(named, box, caption, place);
}

Made<QProgressBar> Maker::progress(const Named<QProgressBar*>& named, const Place& place) const {
    auto* bar = new QProgressBar(parent_);
    bar->setRange(0, 100);
    bar->setValue(0);
    bar->setTextVisible(false);
    return add(named, bar, QStringLiteral("Progress"), place);
}

Made<QGroupBox> Maker::frame(const Named<QGroupBox*>& named, const QString& title,
                             const Place& place) const {
    return add(named, new TitledFrame(title, parent_), title, place);
}

Made<QGroupBox> Maker::untitledFrame(const Named<QGroupBox*>& named, const QString& caption,
                                     const Place& place) const {
    return add(named, new TitledFrame(parent_), caption, place);
}

Made<QGroupBox> Maker::overlayFrame(const Named<QGroupBox*>& named, const QString& title,
                                    const Place& place) const {
    return add(named, new OverlayFrame(title, parent_), title, place).hidden();
}

void Maker::timers(std::initializer_list<Named<QTimer*>> timers) const {
    for (const Named<QTimer*>& named : timers) {
        named.member = new QTimer(parent_);
        named.member->setObjectName(named.name);
        named.member->setInterval(kTimerMs);
    }
}

void setUpForm(QWidget& form, const QString& name, const QString& title) {
    form.setObjectName(name);
    form.setWindowTitle(title);
    form.setAccessibleName(announced(title));
    form.setFont(uiFont());
}

void setUpChildForm(QWidget& form, const QString& name, const QString& title) {
    setUpForm(form, name, title);
    form.resize(px(kChildWidth), px(kChildHeight));
    form.setMaximumSize(form.size());
}

}  // namespace tarnwick::forms
