#include "project/file_naming.h"

#include <QFocusEvent>

#include "forms/frm_main.h"
#include "project/naming_scheme.h"
#include "runtime/events.h"
#include "runtime/guarded.h"

namespace tarnwick::project {

NamingScheme readScheme(const forms::frmMain& form) {
    return readScheme(form.txbPrefix->text(), form.txbStarting->text(), form.txbIncrement->text(),
                      form.txbSuffix->text());
}

FileNaming::FileNaming(forms::frmMain& form, const runtime::FailurePath& failure)
    : form_(form), failure_(failure) {
    const auto onChange = [this](QLineEdit* box, QStringView label) {
        runtime::onEvent(failure_, box, &QLineEdit::textChanged, this,
                         [this, label] { schemeChanged(label); });
    };
    onChange(form_.txbPrefix, u"frmImport.txbPrefix_Change: ");
    onChange(form_.txbStarting, u"frmImport.txbStarting_Change: ");
    onChange(form_.txbIncrement, u"frmImport.txbIncrement_Change: ");
    onChange(form_.txbSuffix, u"frmImport.txbSuffix_Change: ");
    form_.txbStarting->installEventFilter(this);
    runtime::onEvent(failure_, form_.opAutoNamingGroup, &QButtonGroup::idToggled, this,
                     [this](int, bool on) {
                         if (on) opAutoNaming_Click();
                     });
}

void FileNaming::schemeChanged(QStringView label) {
    runtime::guarded(failure_, label, [&](runtime::Line& line) {
        line(10);
        const NamingScheme scheme = readScheme(form_);
        line(20);
        showPreview(scheme);
    });
}

// The .mp3 is only for show: the export always writes .wav.
void FileNaming::showPreview(const NamingScheme& scheme) {
    const QString extension = form_.opSourceFileFormat[0]->isChecked() ? u".wav"_qs : u".mp3"_qs;
    for (qint16 j = 0; j < 3; ++j)
        form_.txbPreview[j]->setText(scheme.previewAt(j) + extension);
}

bool FileNaming::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        // The box has not lost the focus for good if another window or a menu is in front.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
            reason != Qt::MenuBarFocusReason)
            failure_.unguarded([this] { txbStarting_LostFocus(); });
    }
    return QObject::eventFilter(watched, event);
}

// Reads the numbers again to check their range.
void FileNaming::txbStarting_LostFocus() {
    runtime::guarded(failure_, u"frmImport.txbStarting_LostFocus: ", [&](runtime::Line& line) {
        line(10);
        readScheme(form_);
    });
}

void FileNaming::opAutoNaming_Click() {
    form_.frAutoNumber->setEnabled(!form_.opAutoNaming[0]->isChecked());
}

}  // namespace tarnwick::project
