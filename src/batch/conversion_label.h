#pragma once

#include <QString>

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

// Shows `text` in lbConversion, in the label's green. UI thread.
void showConversion(forms::frmBatchProcessor& form, const QString& text, bool bold);

}  // namespace tarnwick::batch
