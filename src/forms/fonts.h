#pragma once

#include <QFont>

class QWidget;

// The fonts of the forms. UI thread only.
namespace tarnwick::forms {

// The one font of all windows: a fixed pixel size, never scaled with the window.
QFont uiFont();

// The same a little smaller, where the design leaves little room: the list, the narrow buttons.
QFont smallFont();

void setBold(QWidget* control, bool bold);

}  // namespace tarnwick::forms
