#include "app/menu_keys.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace tarnwick::app {

MenuKeys::MenuKeys(QWidget& window) {
    for (QLineEdit* box : window.findChildren<QLineEdit*>())
        box->installEventFilter(this);
}

bool MenuKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const auto* box = static_cast<QLineEdit*>(watched);
    const bool menus = key->matches(QKeySequence::Undo)
                           ? !box->isUndoAvailable()
                           : key->keyCombination() == (Qt::CTRL | Qt::Key_E);
    if (menus) event->ignore();
    return menus;
}

}  // namespace tarnwick::app
