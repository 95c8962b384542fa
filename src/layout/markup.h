#pragma once

#include "layout/Scene.h"
#include "layout/write.h"

#include <string>
#include <string_view>

namespace layout {

/// Any text as the content of an XML element, or of an attribute in double quotes. A character that XML cannot hold
/// becomes U+FFFD.
[[nodiscard]] std::string markup(std::string_view text);

/// A number with at most that many decimals, without zeros at its end.
[[nodiscard]] std::string decimal(double number, int decimals = 2);

/// "#rrggbb", or "none".
[[nodiscard]] std::string colourText(Colour colour);

/// The name of a font's face for a list of faces, or nothing when it has characters that faces do not have.
[[nodiscard]] std::string faceText(std::string_view face);

/// The colours of a view in a theme.
struct Colours {
    Colours(const Item& item, Theme theme)
        : line(theme == Theme::plain ? black : item.lineColour),
          fill(theme == Theme::plain && item.fillColour != noColour ? white : item.fillColour) {}

    Colour line;
    Colour fill;
};

} // namespace layout
