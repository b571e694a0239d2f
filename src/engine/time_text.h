#pragma once

#include <QString>

namespace tarnwick::engine {

// "00:00:00.000"; a negative time has a minus sign in front, and hours go past 99.
QString timeText(qint32 ms);

}  // namespace tarnwick::engine
