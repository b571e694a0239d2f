#pragma once

#include <QMouseEvent>

namespace tarnwick::forms {

// The press that the toolkit raises as a double click because another came shortly before.
inline QMouseEvent pressOf(const QMouseEvent& doubleClick) {
    return {QEvent::MouseButtonPress,     doubleClick.position(),      doubleClick.scenePosition(),
            doubleClick.globalPosition(), doubleClick.button(),        doubleClick.buttons(),
            doubleClick.modifiers(),      doubleClick.pointingDevice()};
}

}  // namespace tarnwick::forms
