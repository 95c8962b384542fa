#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <vector>

namespace layout {

struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

struct Rectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Rectangle&) const = default;
    [[nodiscard]] double right() const { return x + width; }
    [[nodiscard]] double bottom() const { return y + height; }
    [[nodiscard]] Point centre() const { return {x + width / 2, y + height / 2}; }
    [[nodiscard]] bool contains(const Point& point, double slack) const {
        return point.x >= x - slack && point.x <= right() + slack && point.y >= y - slack &&
               point.y <= bottom() + slack;
    }
};

inline Rectangle around(const Point& centre, double width, double height) {
    return {centre.x - width / 2, centre.y - height / 2, width, height};
}

inline double distance(const Point& a, const Point& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

/// The outline of a box, at which lines end.
enum class Outline { rectangle, ellipse, rhombus };

/// The point of the outline on the way from its centre to `outside`; the centre when that is where `outside` is.
[[nodiscard]] Point clipped(const Rectangle& box, Outline outline, const Point& outside);

/// The first point of the box on the way from `from` to `to`, or beyond `to`; nothing if there is none.
[[nodiscard]] std::optional<Point> entryInto(const Rectangle& box, const Point& from, const Point& to);

/// The parts of the sign of a component that takes up a box.
struct ComponentParts {
    Rectangle body;
    std::array<Rectangle, 2> lugs; ///< on its left edge
};
[[nodiscard]] ComponentParts componentParts(const Rectangle& box);

/// The point in the middle of a line, by length. The line has a point at least.
[[nodiscard]] Point middleOf(std::span<const Point> line);

} // namespace layout
