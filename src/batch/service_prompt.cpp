#include "batch/service_prompt.h"

#include <QMouseEvent>

#include "forms/frm_batch_processor.h"
#include "forms/units.h"
#include "runtime/service_code.h"

namespace tarnwick::batch {

ServicePrompt::ServicePrompt(forms::frmBatchProcessor& form, const Services& services)
    : form_(form), services_(services) {
    form_.Label15->installEventFilter(this);
}

bool ServicePrompt::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto* mouse = static_cast<const QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton && form_.Label15->rect().contains(mouse->pos()))
            services_.failure.unguarded([this] { Label15_Click(); });
    }
    return QObject::eventFilter(watched, event);
}

void ServicePrompt::Label15_Click() {
    if (services_.boxes.input(u"Password:"_qs) != runtime::kServiceCode) return;
    forms::put(form_.txbDebug, forms::frmBatchProcessor::kTraceShown);
    form_.txbDebug->show();
    form_.txbDebug->raise();
}

}  // namespace tarnwick::batch
