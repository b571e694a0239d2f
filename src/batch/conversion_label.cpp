#include "batch/conversion_label.h"

#include "forms/fonts.h"
#include "forms/frm_batch_processor.h"
#include "forms/texts.h"

namespace tarnwick::batch {

void showConversion(forms::frmBatchProcessor& form, const QString& text, bool bold) {
    forms::setCaption(form.lbConversion, text);
    forms::setBold(form.lbConversion, bold);
    form.colourProgress();
}

}  // namespace tarnwick::batch
