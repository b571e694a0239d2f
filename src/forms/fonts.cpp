#include "forms/fonts.h"

#include <QWidget>

namespace tarnwick::forms {

namespace {

constexpr int kFontPixels = 12;
constexpr int kSmallFontPixels = 11;

}  // namespace

QFont uiFont() {
    QFont font;
    font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Nimbus Sans"),
                      QStringLiteral("Arial"), QStringLiteral("DejaVu Sans Condensed")});
    font.setPixelSize(kFontPixels);
    return font;
}

QFont smallFont() {
    QFont font = uiFont();
    font.setPixelSize(kSmallFontPixels);
    return font;
}

void setBold(QWidget* control, bool bold) {
    QFont font = control->font();
    font.setBold(bold);
    control->setFont(font);
}

}  // namespace tarnwick::forms
