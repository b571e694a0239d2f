#pragma once

#include <QString>

class QLineEdit;
class QWidget;

// The texts of the controls, as they are shown and as they are announced. UI thread only.
namespace tarnwick::forms {

// A caption as it is announced: no outer blanks, no closing colon, no mnemonic mark.
QString announced(const QString& caption);

// Gives a control another caption, shown and announced.
template <class Control>
void setCaption(Control* control, const QString& caption) {
    control->setText(caption);
    control->setAccessibleName(announced(caption));
}

// For a read-out: it announces the value of the moment; `description` says what the value is.
void announceValue(QWidget* control, const QString& description);

// Sets a text as code does it: that is a change, even to the same, and who follows the box is told.
void assign(QLineEdit* box, const QString& text);

}  // namespace tarnwick::forms
