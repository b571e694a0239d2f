#pragma once

#include <QList>

#include "engine/failure.h"

namespace tarnwick::segmentation {

// The prompts that a run of the export could not write. The editor also writes backups during a
// run, even to the same path, so its exports are counted to tell which one is the prompt's. UI
// thread.
class ExportReport {
  public:
    // A run begins or has been reported.
    void clear() {
        unwritten_.clear();
        exportsAhead_ = kNone;
    }

    // A prompt was requested behind `exportsAhead` other exports.
    void requested(qint32 exportsAhead) { exportsAhead_ = exportsAhead; }

    // An export has failed; call it before ended() for the same export.
    void failed(const engine::Failure& failure) {
        if (exportsAhead_ == 0) unwritten_ << failure;
    }

    // An export has ended, well or not.
    void ended() {
        if (exportsAhead_ > kNone) --exportsAhead_;
    }

    const QList<engine::Failure>& unwritten() const { return unwritten_; }

  private:
    static constexpr qint32 kNone = -1;  // no prompt is being written

    QList<engine::Failure> unwritten_;
    qint32 exportsAhead_ = kNone;
};

}  // namespace tarnwick::segmentation
