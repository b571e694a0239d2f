#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "engine/stretch.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::engine {

// A silence in ms: start rounded up and end rounded down, so that it contains no sound.
struct SilenceMs {
    qint32 start{};
    qint32 finish{};
};

// The sound as the UI knows it, used for drawing, playing and exports. Changes only when an event
// is delivered. UI thread only.
struct DeliveredSound {
    std::optional<sound::Timeline> timeline;  // none if there is no sound
    QString path;                             // full path of the file that it came from
    bool analysed = false;
    bool undoAvailable = false;
    std::vector<SilenceMs> silences;  // of the last scan

    qint32 durationMs() const { return timeline ? durationOf(*timeline) : 0; }
};

}  // namespace tarnwick::engine
