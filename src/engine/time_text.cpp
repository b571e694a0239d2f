#include "engine/time_text.h"

#include <cstdlib>

namespace tarnwick::engine {

QString timeText(qint32 ms) {
    const qint64 length = std::abs(qint64{ms});
    return QString::asprintf("%s%02lld:%02lld:%02lld.%03lld", ms < 0 ? "-" : "", length / 3600000,
                             length / 60000 % 60, length / 1000 % 60, length % 1000);
}

}  // namespace tarnwick::engine
