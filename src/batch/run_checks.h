#pragma once

#include <QObject>

#include "batch/run.h"
#include "batch/services.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

class OutputEncoding;

// Reads the headers of the listed files. Tells which of them would stop a run and which would be
// written under the same name, and stores the length of their sound in `run`. Throws nothing.
void checkSources(Run& run, const Services& services);

// Tells what would stop or spoil a run before it starts: when the window opens, when the operator
// leaves a box, and when Process is pressed. Throws nothing and refuses nothing. UI thread.
class RunChecks : public QObject {
  public:
    RunChecks(forms::frmBatchProcessor& form, Run& run, const Services& services,
              OutputEncoding& output);

    void choices() const;     // checks format and levels
    void entries() const;     // checks the boxes that are stored as numbers
    void processing() const;  // call after Process has stored the settings: checks the rest

  private:
    void files(const QString& extension) const;

    forms::frmBatchProcessor& form_;
    Run& run_;
    const Services& services_;
    OutputEncoding& output_;
};

}  // namespace tarnwick::batch
