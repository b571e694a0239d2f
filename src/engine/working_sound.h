#pragma once

#include <QtGlobal>
#include <functional>
#include <optional>
#include <vector>

#include "sound/samples/progress.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::engine {

// The worker's sound: includes every edit that has run, whether or not the UI knows of it yet, and
// the undo history. Worker thread only. A function that throws changes nothing; codeOf() gives the
// code.
class WorkingSound {
  public:
    using Change = std::function<sound::Timeline(const sound::Timeline&, const sound::Progress&)>;

    void set(sound::Timeline timeline);  // a new sound, without a history
    void drop();

    // The present sound. Throws if there is none, or its file was changed in place.
    const sound::Timeline& head() const;

    // Both return the new head. edit() also throws if the duration would not fit 32-bit
    // milliseconds; without `keepUndo` it clears the history. undo() also throws if there is
    // nothing to undo.
    const sound::Timeline& edit(const Change& change, bool keepUndo,
                                const sound::Progress& progress);
    const sound::Timeline& undo();

    bool undoAvailable() const { return !history_.empty(); }

  private:
    std::optional<sound::Timeline> head_;
    std::vector<sound::Timeline> history_;
};

}  // namespace tarnwick::engine
