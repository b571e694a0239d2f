#include "app/appearance.h"

#include <gtest/gtest.h>

#include "widgets/waveform_colours.h"

namespace tarnwick::app {
namespace {

TEST(DarkPalette, EveryTextIsReadableOnItsBackground) {
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
            EXPECT_GE(widgets::contrast(palette.color(group, pair.text),
                                        palette.color(group, pair.ground)),
                      group == QPalette::Disabled ? 3.0 : 4.5)
                << pair.text << " in group " << group;
    }
}

}  // namespace
}  // namespace tarnwick::app
