#pragma once

#include <QList>

#include "engine/failure.h"

namespace tarnwick::segmentation {

// The prompts that a run of the export could not write. The editor may also write backups during a
// run, even to the same path. Counting the editor's exports tells which one is the prompt. UI
// thread.
class ExportReport {
  public:
    // Call when a run begins and after it was reported.
    void clear() {
        unwritten_.clear();
        exportsAhead_ = kNone;
    }

    // Call after requesting a prompt. `exportsAhead`: exports that were pending before.
    void requested(qint32 exportsAhead) { exportsAhead_ = exportsAhead; }

    // Call when an export has failed, before ended() for the same export.
    void failed(const engine::Failure& failure) {
        if (exportsAhead_ == 0) unwritten_ << failure;
    }

    // Call when an export has ended, with or without success.
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
