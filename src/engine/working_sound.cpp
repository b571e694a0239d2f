#include "engine/working_sound.h"

#include <limits>
#include <utility>

#include "engine/failure_codes.h"
#include "engine/stretch.h"

namespace tarnwick::engine {

void WorkingSound::set(sound::Timeline timeline) {
    head_ = std::move(timeline);
    history_.clear();
}

void WorkingSound::drop() {
    head_.reset();
    history_ = {};
}

const sound::Timeline& WorkingSound::head() const {
    if (!head_) throw EditorError(kNoSound, "no sound");
    head_->source()->checkUnchanged();
    return *head_;
}

const sound::Timeline& WorkingSound::edit(const Change& change, bool keepUndo,
                                          const sound::Progress& progress) {
    sound::Timeline edited = change(head(), progress);
    if (lengthOf(edited) > std::numeric_limits<qint32>::max())
        throw EditorError(kBadRange, "sound too long");
    if (keepUndo)
        history_.push_back(*head_);
    else
        history_.clear();
    head_ = std::move(edited);
    return *head_;
}

const sound::Timeline& WorkingSound::undo() {
    head();
    if (history_.empty()) throw EditorError(kNotSupported, "nothing to undo");
    head_ = std::move(history_.back());
    history_.pop_back();
    return *head_;
}

}  // namespace tarnwick::engine
