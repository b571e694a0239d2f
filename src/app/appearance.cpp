#include "app/appearance.h"

#include <QApplication>

#include "forms/colours.h"
#include "platform/colour_scheme.h"

namespace tarnwick::app {

namespace {

struct Colour {
    QPalette::ColorRole role;
    QRgb usual;
    QRgb disabled;
};

constexpr QRgb kWindow = 0xff2b2d30, kBase = 0xff1e1f22, kButton = 0xff3a3d41;
constexpr QRgb kText = 0xffe4e6e8, kFaint = 0xff868b92, kAccent = 0xff2a76b5;

constexpr QRgb kFaintOnLight = 0xff737373;

// Backgrounds from dark to light: Base for fields with values, Window, Button. Every text has a
// contrast of at least 4.5 to its background, and of about 3 if it is disabled.
constexpr std::array kDark{
    Colour{QPalette::Window, kWindow, kWindow},
    Colour{QPalette::WindowText, kText, kFaint},
    Colour{QPalette::Base, kBase, kWindow},
    Colour{QPalette::AlternateBase, 0xff25272a, kWindow},
    Colour{QPalette::Text, kText, kFaint},
    Colour{QPalette::PlaceholderText, 0xff8f949b, kFaint},
    Colour{QPalette::Button, kButton, 0xff303236},
    Colour{QPalette::ButtonText, kText, kFaint},
    Colour{QPalette::BrightText, 0xffffffff, kText},
    Colour{QPalette::Highlight, kAccent, 0xff44484d},
    Colour{QPalette::HighlightedText, 0xffffffff, 0xffa9adb3},
    Colour{QPalette::Link, 0xff6cb2f0, kFaint},
    Colour{QPalette::LinkVisited, 0xffbd9cf2, kFaint},
    Colour{QPalette::ToolTipBase, 0xff43464b, 0xff43464b},
    Colour{QPalette::ToolTipText, 0xfff0f1f2, 0xfff0f1f2},
    Colour{QPalette::Light, 0xff505459, 0xff505459},
    Colour{QPalette::Midlight, 0xff45494e, 0xff45494e},
    Colour{QPalette::Mid, 0xff232528, 0xff232528},
    Colour{QPalette::Dark, 0xff191a1c, 0xff191a1c},
    Colour{QPalette::Shadow, 0xff0c0d0e, 0xff0c0d0e},
};

}  // namespace

QPalette darkPalette() {
    QPalette palette;
    for (const Colour& colour : kDark) {
        palette.setColor(colour.role, QColor(colour.usual));
        palette.setColor(QPalette::Disabled, colour.role, QColor(colour.disabled));
    }
    return palette;
}

QPalette lightPalette() {
    QPalette palette;
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(kFaintOnLight));
    return palette;
}

void followColourScheme(platform::ColourScheme& scheme) {
    if (forms::isDark(QApplication::palette())) return;
    const auto follow = [&scheme] {
        QApplication::setPalette(scheme.dark() ? darkPalette() : lightPalette());
    };
    QObject::connect(&scheme, &platform::ColourScheme::changed, &scheme, follow);
    follow();
}

}  // namespace tarnwick::app
