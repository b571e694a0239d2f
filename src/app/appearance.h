#pragma once

#include <QPalette>

namespace tarnwick::platform {
class ColourScheme;
}  // namespace tarnwick::platform

namespace tarnwick::app {

// The colours of dark windows, every role of every group.
QPalette darkPalette();

// The colours of light windows: those of desktop and style, except for disabled texts, which the
// style makes too faint to read. Roles that are not set come from the desktop.
QPalette lightPalette();

// Sets the palette of all windows to what the desktop asks for, now and at every change. If the
// desktop's own Qt theme is already dark, its palette is kept. `scheme` must outlive the
// application's event loop. UI thread.
void followColourScheme(platform::ColourScheme& scheme);

}  // namespace tarnwick::app
