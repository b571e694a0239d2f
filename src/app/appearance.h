#pragma once

#include <QPalette>

namespace tarnwick::platform {
class ColourScheme;
}  // namespace tarnwick::platform

namespace tarnwick::app {

// The colours of dark windows, every role of every group.
QPalette darkPalette();

// Those of light windows: the ones of desktop and style, but for disabled texts, which the style
// makes too faint to read. Roles that are not set come from the desktop.
QPalette lightPalette();

// Gives all windows the colours that the desktop asks for, now and whenever it asks for others.
// Where the desktop's own Qt theme is dark already, that palette stays. `scheme` outlives the
// application's event loop. UI thread.
void followColourScheme(platform::ColourScheme& scheme);

}  // namespace tarnwick::app
