#pragma once

#include <QtGlobal>

namespace tarnwick::engine {

// A silence in ms: start rounded up and end rounded down, so that it contains no sound.
struct SilenceMs {
    qint32 start{};
    qint32 finish{};

    friend bool operator==(const SilenceMs&, const SilenceMs&) = default;
};

}  // namespace tarnwick::engine
