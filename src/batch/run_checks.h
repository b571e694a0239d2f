#pragma once

#include <QObject>

#include "batch/run.h"
#include "batch/services.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

class OutputEncoding;

// Looks at the listed files: tells which of them would stop a run and which would be written under
// the same name, and notes in `run` how much sound they hold. Throws nothing.
void checkSources(Run& run, const Services& services);

// Tells before a run what would stop or spoil it: when the window opens, when the operator leaves a
// box, and when Process is pressed. Nothing throws, and nothing is refused. UI thread.
class RunChecks : public QObject {
  public:
    RunChecks(forms::frmBatchProcessor& form, Run& run, const Services& services,
              OutputEncoding& output);

    void choices() const;     // of format and levels
    void entries() const;     // that are stored as numbers
    void processing() const;  // all that concerns the run that now begins; after the entries

  private:
    void files(const QString& extension) const;

    forms::frmBatchProcessor& form_;
    Run& run_;
    const Services& services_;
    OutputEncoding& output_;
};

}  // namespace tarnwick::batch
