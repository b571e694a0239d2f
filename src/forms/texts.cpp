#include "forms/texts.h"

#include <QLineEdit>

namespace tarnwick::forms {

QString announced(const QString& caption) {
    QString text = caption.trimmed();
    text.remove(u'&');
    while (text.endsWith(u':')) {
        text.chop(1);
    }
    return text.trimmed();
}

void announceValue(QWidget* control, const QString& description) {
    control->setAccessibleName(QString());
    control->setAccessibleDescription(announced(description));
}

void assign(QLineEdit* box, const QString& text) {
    if (box->text() == text)
        Q_EMIT box->textChanged(text);
    else
        box->setText(text);
}

}  // namespace tarnwick::forms
