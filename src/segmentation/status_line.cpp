#include "segmentation/status_line.h"

#include "forms/frm_main.h"
#include "forms/overlay.h"
#include "forms/texts.h"

namespace tarnwick::segmentation {

void StatusLine::write(const QString& text) {
    forms::setCaption(form_.lbStatus, text);
    forms::repaintNow(form_);
}

void StatusLine::started(const QString& text) {
    form_.pbWAVFormBuilding->setValue(0);
    form_.pbWAVFormBuilding->show();
    write(text);
}

void StatusLine::advanced(const QString& prefix, qint32 percent) {
    if (percent == form_.pbWAVFormBuilding->value()) return;
    form_.pbWAVFormBuilding->show();
    form_.pbWAVFormBuilding->setValue(percent);
    write(prefix + QString::number(percent) + u'%');
}

void StatusLine::finished(const QString& text) {
    form_.pbWAVFormBuilding->hide();
    write(text);
}

void StatusLine::calculating(const QString& text) {
    form_.txbCalculating->setText(text);
    forms::repaintNow(form_);
}

}  // namespace tarnwick::segmentation
