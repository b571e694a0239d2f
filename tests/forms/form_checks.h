#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QWidget>
#include <vector>

namespace tarnwick::forms {

enum ControlState { kShown, kDisabled, kHidden, kHiddenAndDisabled };

// What a control of a form has to be at the start.
struct Expected {
    const char* name;
    const char* text;
    ControlState state = kShown;
    bool on = false;
};

inline bool isControl(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) ||
           qobject_cast<const QAbstractItemView*>(widget) ||
           qobject_cast<const QComboBox*>(widget) || qobject_cast<const QGroupBox*>(widget) ||
           qobject_cast<const QLabel*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
           qobject_cast<const QPlainTextEdit*>(widget) || qobject_cast<const QProgressBar*>(widget);
}

// The controls of a form; what Qt builds inside a combo box or a list is none.
inline std::vector<QWidget*> controlsOf(const QWidget& form) {
    std::vector<QWidget*> controls;
    for (QWidget* widget : form.findChildren<QWidget*>()) {
        const bool direct =
            widget->parentWidget() == &form || qobject_cast<QGroupBox*>(widget->parentWidget());
        if (direct && isControl(widget)) controls.push_back(widget);
    }
    return controls;
}

inline void expectControls(const QWidget& form, const std::vector<Expected>& table) {
    for (const Expected& expected : table) {
        const auto* control = form.findChild<QWidget*>(QString::fromUtf8(expected.name));
        ASSERT_TRUE(control) << expected.name;
        QVariant text = control->property("text");
        if (!text.isValid()) text = control->property("title");
        if (!text.isValid()) text = control->property("currentText");
        EXPECT_EQ(text.toString(), QString::fromUtf8(expected.text)) << expected.name;
        const bool hidden = expected.state == kHidden || expected.state == kHiddenAndDisabled;
        const bool disabled = expected.state == kDisabled || expected.state == kHiddenAndDisabled;
        EXPECT_EQ(control->isHidden(), hidden) << expected.name;
        EXPECT_EQ(control->isEnabled(), !disabled) << expected.name;
        EXPECT_EQ(control->property("checked").toBool(), expected.on) << expected.name;
    }
}

// No two controls under one name, each announced, each in its parent and with room for its text,
// none over another.
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
        if (const auto* label = qobject_cast<const QLabel*>(control)) {
            EXPECT_GE(label->width(), label->wordWrap() ? 0 : label->sizeHint().width()) << name;
            const int height = label->wordWrap() ? label->heightForWidth(label->width())
                                                 : label->sizeHint().height();
            EXPECT_GE(label->height(), height) << name;
        }
        for (const QWidget* other : controls) {
            const bool beside = other != control && other->isVisibleTo(&form) &&
                                other->parentWidget() == control->parentWidget();
            EXPECT_FALSE(beside && other->geometry().intersects(control->geometry()))
                << name << " and " << other->objectName().toStdString();
        }
    }
}

}  // namespace tarnwick::forms
