#pragma once

#include <QSize>
#include <QString>
#include <optional>

#include "platform/notices.h"

// The notices about help, the settings database and the window. `reason` is a few words that
// continue a sentence.

namespace tarnwick::app {

// `target`: the address of a page, or the full path of a file or folder. `isThere`: whether that
// file or folder exists.
platform::Notice notOpened(const QString& target, const QString& reason, bool isThere);

// `database`: full path. The first is told at the start, the second after a failed save.
platform::Notice settingsReadOnly(const QString& database, const QString& reason);
platform::Notice settingsNotStored(const QString& database, const QString& reason);

// None if the window was not shrunk. `wished` is its size at `scale` (1.0 is 100 %), `shrunk` the
// size that fits on the screen.
std::optional<platform::Notice> windowTooLarge(QSize wished, QSize shrunk, double scale);

}  // namespace tarnwick::app
