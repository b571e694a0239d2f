#pragma once

#include <QObject>

#include "rename/services.h"

class QCheckBox;
class QLineEdit;

namespace tarnwick::forms {
class frmRenameWiz;
}

namespace tarnwick::rename {

// How the fields of the rules answer one another. Every change raises its event, also one that
// another field's handler made; what comes of that in the end is wanted. UI thread.
class RuleFields : public QObject {
  public:
    RuleFields(forms::frmRenameWiz& form, const Services& services);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // A text, a number and a letter of which only one is to be put before, or behind, the names.
    struct Group {
        QLineEdit* text;
        QCheckBox* number;
        QCheckBox* letter;
    };
    void connectGroup(const Group& group);

    void clicked(QObject* box);
    void lostFocus(QLineEdit* extension);

    forms::frmRenameWiz& form_;
    const Services& services_;
};

}  // namespace tarnwick::rename
