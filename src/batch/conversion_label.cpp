#include "batch/conversion_label.h"

#include "forms/frm_batch_processor.h"

namespace tarnwick::batch {

void showConversion(forms::frmBatchProcessor& form, const QString& text, bool bold) {
    forms::setCaption(form.lbConversion, text);
    forms::setBold(form.lbConversion, bold);
    QPalette palette = form.lbConversion->palette();
    palette.setColor(QPalette::WindowText,
                     forms::frmBatchProcessor::progressColour(form.palette()));
    form.lbConversion->setPalette(palette);
}

}  // namespace tarnwick::batch
