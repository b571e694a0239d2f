#include "app/appearance.h"

#include <gtest/gtest.h>

namespace tarnwick::app {
namespace {

double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

// The contrast ratio of the web accessibility guidelines, 1 to 21.
double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax(luminance(one), luminance(other));
    return (light + 0.05) / (dark + 0.05);
}

TEST(DarkPalette, EveryTextCanBeReadOnItsGround) {
    struct Pair {
        QPalette::ColorRole text, ground;
    };
    const QPalette palette = darkPalette();
    for (const Pair& pair :
         {Pair{QPalette::WindowText, QPalette::Window}, Pair{QPalette::Text, QPalette::Base},
          Pair{QPalette::Text, QPalette::AlternateBase},
          Pair{QPalette::PlaceholderText, QPalette::Base},
          Pair{QPalette::ButtonText, QPalette::Button},
          Pair{QPalette::HighlightedText, QPalette::Highlight},
          Pair{QPalette::Link, QPalette::Window}, Pair{QPalette::LinkVisited, QPalette::Window},
          Pair{QPalette::ToolTipText, QPalette::ToolTipBase}}) {
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            EXPECT_GE(contrast(palette.color(group, pair.text), palette.color(group, pair.ground)),
                      group == QPalette::Disabled ? 3.0 : 4.5)
                << pair.text << " in group " << group;
    }
}

}  // namespace
}  // namespace tarnwick::app
