#pragma once

#include <QtGlobal>
#include <functional>
#include <optional>
#include <vector>

#include "sound/samples/progress.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::engine {

// The sound as the worker has it: with every edit that has run, whether or not the UI has been
// told of it yet, and what came before each of them. Worker thread only. What throws leaves all as
// it was; the failure has a code.
class WorkingSound {
  public:
    using Change = std::function<sound::Timeline(const sound::Timeline&, const sound::Progress&)>;

    void set(sound::Timeline timeline);  // a new sound, without a history
    void drop();

    // The sound as it now stands. Throws when it has none, or its file was changed in place.
    const sound::Timeline& head() const;

    // Both give the new head. An edit throws too when the sound would grow past what 32-bit
    // milliseconds can tell; without `keepUndo` the way back is given up. An undo throws too when
    // there is nothing to undo.
    const sound::Timeline& edit(const Change& change, bool keepUndo,
                                const sound::Progress& progress);
    const sound::Timeline& undo();

    bool undoAvailable() const { return !history_.empty(); }

  private:
    std::optional<sound::Timeline> head_;
    std::vector<sound::Timeline> history_;
};

}  // namespace tarnwick::engine
