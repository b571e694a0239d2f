#include "rename/rule_fields.h"

#include <QFocusEvent>
#include <QMouseEvent>

#include "forms/frm_rename_wiz.h"
#include "runtime/events.h"

namespace tarnwick::rename {

RuleFields::RuleFields(forms::frmRenameWiz& form, const Services& services)
    : form_(form), services_(services) {
    connectGroup({form_.txbAddPrefix, form_.chIncrNumberPrefix, form_.chIncrLetterPrefix});
    connectGroup({form_.txbAddSuffix, form_.chIncrNumberSuffix, form_.chIncrLetterSuffix});
    for (QLineEdit* box :
         {form_.txbInsert, form_.txbRemove, form_.txbSourceExt, form_.txbTargetExt})
        box->installEventFilter(this);
}

void RuleFields::connectGroup(const Group& group) {
    runtime::onEvent(services_.failure, group.text, &QLineEdit::textChanged, this, [group] {
        group.number->setChecked(false);
        group.letter->setChecked(false);
    });
    runtime::onEvent(services_.failure, group.number, &QCheckBox::toggled, this, [group] {
        group.letter->setChecked(false);
        group.text->clear();
    });
    runtime::onEvent(services_.failure, group.letter, &QCheckBox::toggled, this, [group] {
        group.number->setChecked(false);
        group.text->clear();
    });
}

void RuleFields::clicked(QObject* box) {
    if (box == form_.txbInsert) form_.txbRemove->clear();
    if (box == form_.txbRemove) form_.txbInsert->clear();
}

// Adds the dot in front of an extension, even in an empty box that has only had the focus.
void RuleFields::lostFocus(QLineEdit* extension) {
    if (!extension->text().startsWith(u'.')) extension->setText(u'.' + extension->text());
}

bool RuleFields::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        clicked(watched);
    if (event->type() == QEvent::FocusOut &&
        (watched == form_.txbSourceExt || watched == form_.txbTargetExt)) {
        // Only if the focus goes to another control, not to another window or the box's own menu.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            lostFocus(static_cast<QLineEdit*>(watched));
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace tarnwick::rename
