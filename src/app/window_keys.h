#pragma once

class QMenuBar;
class QPushButton;
class QWidget;

namespace tarnwick::app {

// Keys that every desktop program has and that no caption shows. UI thread.

// Alt with the first letter of a menu's caption opens that menu, and F10 the first one, while the
// menu bar is shown.
void addMenuKeys(QMenuBar& bar);

// Esc clicks `button`, if it is enabled and shown, while `part` is shown in the active window.
void clickOnEscape(QWidget& part, QPushButton& button);

}  // namespace tarnwick::app
