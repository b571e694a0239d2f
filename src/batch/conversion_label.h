#pragma once

#include <QString>

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

// What lbConversion says, in its green. UI thread.
void showConversion(forms::frmBatchProcessor& form, const QString& text, bool bold);

}  // namespace tarnwick::batch
