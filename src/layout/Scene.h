#pragma once

#include "layout/geometry.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace layout {

/// The shape of a view. Each writer has a row for each shape.
enum class Shape : std::uint8_t {
    line, ///< no box
    none, ///< texts only
    rectangle,
    shadow, ///< a rectangle with a second edge
    package,
    note,
    oval,
    actor,
    boundary,
    control,
    entity,
    circle,
    component,
    cube,
    shadedCube,
    rounded,
    startState,
    endState,
    decision,
    bar,
    lifeline, ///< a head, and a dashed line down from it
    swimlane,
    arrowhead, ///< a small arrow beside a link
};
inline constexpr std::size_t shapeCount = 23;

/// The sign at an end of a line.
enum class Mark : std::uint8_t { none, arrow, filledArrow, triangle, diamond, filledDiamond };

using Colour = std::int32_t; // red·65536 + green·256 + blue
inline constexpr Colour noColour = -1;
inline constexpr Colour black = 0;
inline constexpr Colour white = 0xFFFFFF;

struct Font {
    std::string_view face; ///< empty for the usual one
    double size = 0;       ///< in the units of the picture
    Colour colour = black;
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isStruck = false;
};

enum class Anchor : std::uint8_t { start, middle, end };

/// A line of text. It is `font.size` high or a little more.
struct Text {
    Point at; ///< on its base line
    Anchor anchor = Anchor::middle;
    double width = 0; ///< by the table of advances
    Font font;
    std::string text;

    [[nodiscard]] Rectangle room() const {
        const double shift = anchor == Anchor::start ? 0 : anchor == Anchor::middle ? width / 2 : width;
        return {at.x - shift, at.y - font.size * 0.9, width, font.size * 1.2};
    }
};

inline constexpr int noItem = -1;

/// A view.
struct Item {
    std::string_view kind;
    std::string_view quid;
    std::string reference; ///< the number after "@"; empty for none
    std::uint64_t line = 0;
    std::string_view file; ///< of a unit; empty for the model's own
    std::string title;
    int parent = noItem; ///< the item that it is a part of, which precedes it
    bool isMissing = false;
    bool isUnknown = false; ///< of a kind that no rule is for

    Shape shape = Shape::line;
    bool hasBox = false;
    Rectangle box;
    double head = 0;                ///< of a lifeline: how high its head is
    Shape icon = Shape::none;       ///< of a lifeline, in place of the box that is its head
    Rectangle iconBox;              ///< of that icon
    std::vector<double> separators; ///< heights at which a line crosses the box
    std::vector<Rectangle> bars;    ///< activations, qualifiers
    bool areBarsDashed = false;
    std::vector<Text> texts;

    std::vector<Point> route; ///< of a line; two points or more, or none
    bool isDashed = false;
    Mark startMark = Mark::none;
    Mark endMark = Mark::none;
    int client = noItem;
    int supplier = noItem;
    int tree = noItem; ///< the line that this one ends at, of a generalization, which leads on to the supplier

    Colour lineColour = black;
    Colour fillColour = noColour;
};

/// A diagram as it is drawn. Coordinates are the file's: 300 to an inch, y downwards. Refers to texts of the tree that
/// it was made from.
struct Scene {
    std::string_view kind;
    std::string_view name;
    std::vector<std::string> packages; ///< that it is in, from the top
    std::string_view quid;
    std::uint64_t line = 0;
    std::string_view file;
    std::vector<Item> items;
    Rectangle bounds; ///< around all of it
};

} // namespace layout
