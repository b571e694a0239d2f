#pragma once

#include <QList>
#include <optional>

namespace tarnwick::segmentation {

// Who asked for an edit: the operator, or the load, which adds a pause at each end.
enum class EditKind { Operator, StartPause, EndPause };

// The edits of the present sound: the requested ones that have not ended, in the order of the
// requests, and the completed ones that Undo can take back. UI thread.
class EditLog {
  public:
    void asked(EditKind kind) { underWay_ << kind; }

    // Call when the oldest requested edit has ended. If none is entered, it was the operator's.
    EditKind ended() { return underWay_.isEmpty() ? EditKind::Operator : underWay_.takeFirst(); }

    bool anyUnderWay() const { return !underWay_.isEmpty(); }

    // Call when an edit other than Undo has changed the sound.
    void done(EditKind kind) { done_ << kind; }

    // Call when Undo has taken back the last edit. Returns its kind; nothing if it was not entered.
    std::optional<EditKind> undone() {
        return done_.isEmpty() ? std::nullopt : std::optional(done_.takeLast());
    }

    bool anyDone() const { return !done_.isEmpty(); }

    // Call when the sound is closed or replaced.
    void clear() {
        underWay_.clear();
        done_.clear();
    }

  private:
    QList<EditKind> underWay_;
    QList<EditKind> done_;
};

}  // namespace tarnwick::segmentation
