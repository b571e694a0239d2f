#include "app/window_keys.h"

#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>

namespace tarnwick::app {

void addMenuKeys(QMenuBar& bar) {
    const auto opens = [&bar](const QKeySequence& key, QAction* menu) {
        QObject::connect(new QShortcut(key, &bar), &QShortcut::activated, &bar,
                         [&bar, menu] { bar.setActiveAction(menu); });
    };
    const QList<QAction*> menus = bar.actions();
    for (QAction* menu : menus)
        opens(QKeySequence(u"Alt+"_qs + menu->text().left(1)), menu);
    if (!menus.isEmpty()) opens(Qt::Key_F10, menus.front());
}

void clickOnEscape(QWidget& part, QPushButton& button) {
    QObject::connect(new QShortcut(Qt::Key_Escape, &part), &QShortcut::activated, &button,
                     [&button] {
                         if (button.isVisible()) button.click();
                     });
}

}  // namespace tarnwick::app
