#pragma once

#include "layout/Scene.h"
#include "layout/write.h"

#include <string>
#include <string_view>

namespace layout {

/// Any text as the content of an XML element, or of an attribute in double quotes. A character that XML cannot hold
/// becomes U+FFFD.
[[nodiscard]] std::string markup(std::string_view text);

/// Whether the text is its own markup, as nearly all texts are.
[[nodiscard]] bool standsAsMarkup(std::string_view text);

/// A number with at most that many decimals, without zeros at its end.
[[nodiscard]] std::string decimal(double number, int decimals = 2);

/// "#rrggbb", or "none".
[[nodiscard]] std::string colourText(Colour colour);

/// The same two, written to memory with room for `mostDigits` or `mostOfColour` bytes; return the end.
inline constexpr std::size_t mostDigits = 64;
inline constexpr std::size_t mostOfColour = 7;
[[nodiscard]] char* writeDecimal(char* to, double number, int decimals = 2);
[[nodiscard]] char* writeColour(char* to, Colour colour);

/// Whether the text can be the name of a font's face in a list of faces: it has no characters that faces do not have.
[[nodiscard]] bool isFace(std::string_view text);

/// The colours of a view in a theme.
struct Colours {
    Colours(const Item& item, Theme theme)
        : line(theme == Theme::plain ? black : item.lineColour),
          fill(theme == Theme::plain && item.fillColour != noColour ? white : item.fillColour) {}

    Colour line;
    Colour fill;
};

} // namespace layout
