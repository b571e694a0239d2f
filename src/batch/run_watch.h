#pragma once

#include <QObject>
#include <optional>
#include <utility>

#include "batch/chain_step.h"
#include "batch/run.h"
#include "batch/run_notices.h"
#include "batch/services.h"

namespace tarnwick::batch {

// Watches a run: keeps its report and tells the operator when the run waits for good, when it ends
// with something amiss and when the window is closed before. Nothing throws, and nothing is told
// between runs. UI thread.
class RunWatch : public QObject {
  public:
    RunWatch(Run& run, const Services& services);

    // The steps that the run was asked for.
    struct Asked {
        bool ends = false;
        bool level = false;
    };
    void started(const Asked& asked);
    void loading(const QString& name);
    // A step begins. The step text of the run is still that of the step before.
    void begins(ChainStep step);
    // A cut begins: of the first `cutMs`, or of all from `beginMs` on, which may be negative.
    void cutsStart(qint32 cutMs);
    void cutsEnd(qint32 beginMs);
    void hears(qint32 beginMs, qint32 endMs);  // the audible range
    void edited() { heard_.reset(); }
    // A step that the engine refused raises no event, so the run waits for good.
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
    // Of the file in work.
    bool halted_ = false;
    bool headSet_ = false;
    bool normalized_ = false;
    QString reason_;                                  // of its last failure
    std::optional<std::pair<qint32, qint32>> heard_;  // the last range that led to no edit
    int rounds_ = 0;                                  // how often it was heard
};

}  // namespace tarnwick::batch
