#pragma once

#include <QObject>

#include "rename/services.h"

class QCheckBox;
class QLineEdit;

namespace tarnwick::forms {
class frmRenameWiz;
}

namespace tarnwick::rename {

// The fields of the rules that clear each other. Every change raises its event, even one made by
// another field's handler; the final result of such a series is intended. UI thread.
class RuleFields : public QObject {
  public:
    RuleFields(forms::frmRenameWiz& form, const Services& services);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // A text, a number and a letter, only one of which is to be put before, or after, the names.
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
