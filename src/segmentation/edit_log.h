#pragma once

#include <QList>
#include <optional>

namespace tarnwick::segmentation {

// Who asked for an edit: the operator, or the load, which adds a pause at each end.
enum class EditKind { Operator, StartPause, EndPause };

// The edits of the present sound: those under way, in the order of the requests, and those that
// Undo would take back. UI thread.
class EditLog {
  public:
    void asked(EditKind kind) { underWay_ << kind; }

    // The oldest edit under way has ended. An edit that nobody has entered is the operator's.
    EditKind ended() { return underWay_.isEmpty() ? EditKind::Operator : underWay_.takeFirst(); }

    bool anyUnderWay() const { return !underWay_.isEmpty(); }

    // The sound has changed by an edit other than Undo.
    void done(EditKind kind) { done_ << kind; }

    // Undo has taken back the last edit; nothing if that was not entered.
    std::optional<EditKind> undone() {
        return done_.isEmpty() ? std::nullopt : std::optional(done_.takeLast());
    }

    bool anyDone() const { return !done_.isEmpty(); }

    // The sound was closed or replaced.
    void clear() {
        underWay_.clear();
        done_.clear();
    }

  private:
    QList<EditKind> underWay_;
    QList<EditKind> done_;
};

}  // namespace tarnwick::segmentation
