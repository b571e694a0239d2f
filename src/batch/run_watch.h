#pragma once

#include <QObject>
#include <optional>
#include <utility>

#include "batch/chain_step.h"
#include "batch/run.h"
#include "batch/run_notices.h"
#include "batch/services.h"

namespace tarnwick::batch {

// Watches a run and keeps its report. Tells the operator when the run waits forever, when it has
// ended with mishaps, and when the window is closed before the end. Throws nothing, and tells
// nothing between runs. UI thread.
class RunWatch : public QObject {
  public:
    RunWatch(Run& run, const Services& services);

    // The steps that the operator has requested for all files.
    struct Asked {
        bool ends = false;
        bool level = false;
    };
    void started(const Asked& asked);
    void loading(const QString& name);
    // Call when a step begins, before the run stores its step text.
    void begins(ChainStep step);
    // Call before a cut: of the first `cutMs`, or from `beginMs` (may be negative) to the end.
    void cutsStart(qint32 cutMs);
    void cutsEnd(qint32 beginMs);
    void hears(qint32 beginMs, qint32 endMs);  // the audible range was found
    void edited() { heard_.reset(); }
    // Call after a request to the engine: if it was refused, no event comes and the run waits
    // forever.
    void asked(Halt step);
    void exported();
    void finished();
    void closed();

  private:
    void failed(const engine::Failure& failure);
    void halted(Halt halt);
    void checkSteps();
    void startFile();

    Run& run_;
    const Services& services_;
    Asked asked_;
    ChainStep step_ = ChainStep::Wait;
    // The state of the file in work.
    bool halted_ = false;
    bool headSet_ = false;
    bool normalized_ = false;
    QString reason_;                                  // why its last operation failed
    std::optional<std::pair<qint32, qint32>> heard_;  // the last range that led to no edit
    int rounds_ = 0;                                  // how often that range was found in a row
};

}  // namespace tarnwick::batch
