#pragma once

#include "layout/Scene.h"

#include <span>
#include <string_view>

namespace layout {

/// Where the size of a view comes from that has none.
enum class Contents : std::uint8_t {
    none,    ///< the row's size
    label,   ///< its label, within the outline
    members, ///< its name and compartments
    note,    ///< its text, to the left
    beside,  ///< the row's size; the label is outside
};

/// How views of a kind are drawn.
struct ViewKind {
    std::string_view kind;
    Shape shape;
    Contents contents = Contents::none;
    double width = 0; ///< without one in the file; at least so much where the contents say
    double height = 0;
    bool isDashed = false;  ///< of a line
    Mark mark = Mark::none; ///< of a line: at the supplier
    bool hasElement = true; ///< it shows something of the model
};

/// The row of a kind; null when there is none.
[[nodiscard]] const ViewKind* findViewKind(std::string_view kind);

/// Of names of icons and of stereotypes.
struct Icon {
    std::string_view name; ///< in lower case
    Shape shape;
    double width;
    double height;
};
/// The row of an icon, case ignored; null when there is none.
[[nodiscard]] const Icon* findIcon(std::string_view name);

/// A rule for a kind of view whose first name says more.
struct StateKind {
    std::string_view name;
    Shape shape;
    double width;
    double height;
    Contents contents;
};
[[nodiscard]] const StateKind* findStateKind(std::string_view name);

} // namespace layout
