#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "engine/silence_ms.h"
#include "engine/stretch.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::engine {

// The sound as the UI knows it, used for drawing, playing and exports. Changes only when an event
// is delivered. UI thread only.
struct DeliveredSound {
    std::optional<sound::Timeline> timeline;  // none if there is no sound
    QString path;                             // full path of the file that it came from
    bool analysed = false;
    bool undoAvailable = false;
    bool scanned = false;             // since it was loaded; a failed scan does not count
    std::vector<SilenceMs> silences;  // of the last scan
    bool silencesFit = false;         // no edit was delivered since that scan

    qint32 durationMs() const { return timeline ? durationOf(*timeline) : 0; }
};

}  // namespace tarnwick::engine
