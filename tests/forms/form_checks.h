#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QWidget>
#include <algorithm>
#include <vector>

namespace tarnwick::forms {

inline bool isControl(const QWidget* widget) {
    const auto isA = [&](const char* kind) { return widget->inherits(kind); };
    const auto kinds = {"QAbstractButton", "QAbstractItemView", "QComboBox",      "QGroupBox",
                        "QLabel",          "QLineEdit",         "QPlainTextEdit", "QProgressBar"};
    return std::any_of(kinds.begin(), kinds.end(), isA);
}

// The controls of a form, without the widgets that Qt creates inside a combo box or a list.
inline std::vector<QWidget*> controlsOf(const QWidget& form) {
    std::vector<QWidget*> controls;
    for (QWidget* widget : form.findChildren<QWidget*>())
        if (isControl(widget) &&
            (widget->parentWidget() == &form || qobject_cast<QGroupBox*>(widget->parentWidget())))
            controls.push_back(widget);
    return controls;
}

// Checks the controls of a new form against entries such as "~cbUndo|txbSpeed=150", with "-" before
// the name of a hidden control, "~" of a disabled one, "*" of one that is on. The text is only
// checked if the entry has one.
inline void expectControls(const QWidget& form, const char* table) {
    for (const QString& entry : QString::fromUtf8(table).remove(u'\n').split(u'|')) {
        const qsizetype begin = entry.indexOf(QRegularExpression(QStringLiteral("[A-Za-z]")));
        const QString flags = entry.left(begin);
        const std::string told = entry.toStdString();
        const auto* control = form.findChild<QWidget*>(entry.mid(begin).section(u'=', 0, 0));
        ASSERT_TRUE(control) << told;
        EXPECT_EQ(control->isHidden(), flags.contains(u'-')) << told;
        EXPECT_EQ(control->isEnabled(), !flags.contains(u'~')) << told;
        EXPECT_EQ(control->property("checked").toBool(), flags.contains(u'*')) << told;
        if (!entry.contains(u'=')) continue;
        QVariant text = control->property("text");
        for (const char* other : {"title", "currentText"})
            if (!text.isValid()) text = control->property(other);
        EXPECT_EQ(text.toString(), entry.section(u'=', 1)) << told;
    }
}

// The space that a control's caption or value needs.
inline QSize neededBy(const QWidget& control) {
    const QFontMetrics metrics(control.font());
    if (const auto* label = qobject_cast<const QLabel*>(&control)) {
        if (label->wordWrap()) return {0, label->heightForWidth(label->width())};
        if (label->alignment() & Qt::AlignBottom)  // the space above capitals may be cut off
            return {label->sizeHint().width(), metrics.capHeight() + metrics.descent()};
        return label->sizeHint();
    }
    if (const auto* button = qobject_cast<const QPushButton*>(&control)) {
        const QRect area(0, 0, button->width() - 6, button->height() - 2);
        const QString caption = button->text().trimmed();
        if (caption.isEmpty()) return {};
        return metrics.boundingRect(area, Qt::AlignCenter | Qt::TextWordWrap, caption).size() +
               QSize(6, 2);
    }
    if (const auto* box = qobject_cast<const QLineEdit*>(&control))
        return {metrics.horizontalAdvance(box->text()) + 10, metrics.height() + 4};
    if (const auto* group = qobject_cast<const QGroupBox*>(&control))
        return {metrics.horizontalAdvance(group->title()) + 22, 0};
    const bool hints = control.inherits("QAbstractButton") || control.inherits("QComboBox");
    return hints ? control.sizeHint() : QSize();
}

inline void expectRoom(const QWidget& control) {
    const QSize needed = neededBy(control);
    EXPECT_LE(needed.width(), control.width()) << control.objectName().toStdString();
    EXPECT_LE(needed.height(), control.height()) << control.objectName().toStdString();
}

// Checks that every control has a name of its own, an accessible name, room for its text, and a
// place inside its parent that overlaps no other control.
inline void expectTidy(const QWidget& form) {
    const std::vector<QWidget*> controls = controlsOf(form);
    QStringList names;
    for (const QWidget* control : controls) {
        const std::string name = control->objectName().toStdString();
        EXPECT_FALSE(name.empty());
        EXPECT_FALSE(names.contains(control->objectName())) << name;
        names << control->objectName();
        const auto* group = qobject_cast<const QGroupBox*>(control);
        if (!group || !group->title().isEmpty()) {
            EXPECT_FALSE(control->accessibleName().isEmpty()) << name;
        }
        if (!control->isVisibleTo(&form) || !form.rect().contains(control->mapTo(&form, QPoint())))
            continue;
        EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry())) << name;
        expectRoom(*control);
        for (const QWidget* other : controls) {
            const bool beside = other != control && other->isVisibleTo(&form) &&
                                other->parentWidget() == control->parentWidget();
            EXPECT_FALSE(beside && other->geometry().intersects(control->geometry()))
                << name << " and " << other->objectName().toStdString();
        }
    }
}

}  // namespace tarnwick::forms
