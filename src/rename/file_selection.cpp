#include "rename/file_selection.h"

#include "forms/frm_rename_wiz.h"
#include "forms/texts.h"
#include "runtime/events.h"

namespace tarnwick::rename {

FileSelection::FileSelection(forms::frmRenameWiz& form, const Services& services) : form_(form) {
    const auto onClick = [&](QPushButton* button, void (FileSelection::*handler)()) {
        runtime::onEvent(services.failure, button, &QPushButton::clicked, this,
                         [this, handler] { (this->*handler)(); });
    };
    onClick(form_.cbAdd, &FileSelection::cbAdd_Click);
    onClick(form_.cbAddAll, &FileSelection::cbAddAll_Click);
    onClick(form_.cbRemove, &FileSelection::cbRemove_Click);
    onClick(form_.cbRemoveAll, &FileSelection::cbRemoveAll_Click);
    onClick(form_.cbFlip, &FileSelection::cbFlip_Click);
    onClick(form_.cbClear, &FileSelection::cbClear_Click);
}

void FileSelection::cbAdd_Click() {
    form_.lbxSelectedFiles->add(form_.lbxAvailableFiles->takeHighlighted());
}

void FileSelection::cbAddAll_Click() {
    form_.lbxSelectedFiles->add(form_.lbxAvailableFiles->takeAll());
}

void FileSelection::cbRemove_Click() {
    form_.lbxAvailableFiles->add(form_.lbxSelectedFiles->takeHighlighted());
}

void FileSelection::cbRemoveAll_Click() {
    form_.lbxAvailableFiles->add(form_.lbxSelectedFiles->takeAll());
}

// The caption names what the next click will do.
void FileSelection::cbFlip_Click() {
    const bool beside = form_.cbFlip->text() == u"  Flip Vertical";
    form_.arrange(beside ? forms::frmRenameWiz::kSideBySide
                         : forms::frmRenameWiz::kOneAboveTheOther);
    forms::setCaption(form_.cbFlip, beside ? u"  Flip Horizontal"_qs : u"  Flip Vertical"_qs);
}

void FileSelection::cbClear_Click() {
    for (QLineEdit* box :
         {form_.txbAddPrefix, form_.txbAddSuffix, form_.txbSearchFor, form_.txbReplaceWith,
          form_.txbInsert, form_.txbRemove, form_.txbSourceExt, form_.txbTargetExt,
          form_.txbDateModified, form_.txbNewDate})
        box->clear();
    for (QCheckBox* box : {form_.chIncrNumberPrefix, form_.chIncrLetterPrefix,
                           form_.chIncrNumberSuffix, form_.chIncrLetterSuffix})
        box->setChecked(false);
    form_.txbStartingAt->setText(u"1"_qs);
}

}  // namespace tarnwick::rename
