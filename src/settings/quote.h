#pragma once

#include <QString>

namespace tarnwick::settings {

// `text` with each apostrophe doubled, fit to stand between single quotes in a statement.
QString Quote_Doubled(const QString& text);

}  // namespace tarnwick::settings
