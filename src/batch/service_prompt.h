#pragma once

#include <QObject>

#include "batch/services.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

// A click on the caption "Selected Steps:" asks for the access code of the support staff, which
// makes the trace visible. UI thread.
class ServicePrompt : public QObject {
  public:
    ServicePrompt(forms::frmBatchProcessor& form, const Services& services);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Label15_Click();

    forms::frmBatchProcessor& form_;
    const Services& services_;
};

}  // namespace tarnwick::batch
