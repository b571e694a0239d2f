#include "forms/option_stop.h"

#include <QEvent>
#include <algorithm>

namespace tarnwick::forms {

OptionStop::OptionStop(QObject* owner, QList<QAbstractButton*> options)
    : QObject(owner), options_(std::move(options)) {
    for (QAbstractButton* option : options_) {
        connect(option, &QAbstractButton::toggled, this, [this] { settle(); });
        option->installEventFilter(this);
    }
    settle();
}

bool OptionStop::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::HideToParent || event->type() == QEvent::ShowToParent) settle();
    return QObject::eventFilter(watched, event);
}

void OptionStop::settle() {
    const auto seen = [](const QAbstractButton* option) { return !option->isHidden(); };
    const auto on = [&](const QAbstractButton* option) {
        return seen(option) && option->isChecked();
    };
    auto stop = std::ranges::find_if(options_, on);
    if (stop == options_.end()) stop = std::ranges::find_if(options_, seen);
    for (auto option = options_.begin(); option != options_.end(); ++option)
        (*option)->setFocusPolicy(option == stop ? Qt::StrongFocus : Qt::ClickFocus);
}

QButtonGroup* groupOptions(QObject* owner, std::span<QRadioButton* const> options) {
    auto* group = new QButtonGroup(owner);
    for (std::size_t i = 0; i < options.size(); ++i)
        group->addButton(options[i], static_cast<int>(i));
    new OptionStop(group, group->buttons());
    return group;
}

}  // namespace tarnwick::forms
