#include "forms/makers.h"

#include "forms/controls.h"

namespace tarnwick::forms {

QString elementName(const QString& array, int index) {
    return QStringLiteral("%1(%2)").arg(array).arg(index);
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
