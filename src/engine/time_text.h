#pragma once

#include <QString>

namespace tarnwick::engine {

// "00:00:00.000"; negative times begin with a minus sign, and hours can exceed 99.
QString timeText(qint32 ms);

}  // namespace tarnwick::engine
