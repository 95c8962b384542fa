#include "layout/geometry.h"

#include <limits>

namespace layout {

Point clipped(const Rectangle& box, Outline outline, const Point& outside) {
    const Point centre = box.centre();
    const double dx = outside.x - centre.x;
    const double dy = outside.y - centre.y;
    const double halfWidth = std::max(box.width / 2, 0.5);
    const double halfHeight = std::max(box.height / 2, 0.5);
    const double across = std::abs(dx) / halfWidth;
    const double along = std::abs(dy) / halfHeight;
    const double steps = outline == Outline::rectangle ? std::max(across, along)
                         : outline == Outline::ellipse ? std::hypot(across, along)
                                                       : across + along;
    return steps > 0 ? Point{centre.x + dx / steps, centre.y + dy / steps} : centre;
}

std::optional<Point> entryInto(const Rectangle& box, const Point& from, const Point& to) {
    double part = 0; // of the way, behind which both coordinates are those of points of the box
    double last = std::numeric_limits<double>::infinity();
    const auto cut = [&](double start, double step, double low, double high) {
        if (step == 0) {
            last = start < low || start > high ? -1 : last;
            return;
        }
        part = std::max(part, ((step > 0 ? low : high) - start) / step);
        last = std::min(last, ((step > 0 ? high : low) - start) / step);
    };
    cut(from.x, to.x - from.x, box.x, box.right());
    cut(from.y, to.y - from.y, box.y, box.bottom());
    return part <= last ? std::optional(Point{from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part})
                        : std::nullopt;
}

ComponentParts componentParts(const Rectangle& box) {
    const double across = std::min(60.0, box.width / 4);
    const double height = std::min(30.0, box.height / 5);
    return {.body = {box.x + across / 2, box.y, box.width - across / 2, box.height},
            .lugs = {Rectangle{box.x, box.y + box.height * 0.22, across, height},
                     Rectangle{box.x, box.y + box.height * 0.56, across, height}}};
}

Point middleOf(std::span<const Point> line) {
    double length = 0;
    for (std::size_t index = 1; index < line.size(); ++index) {
        length += distance(line[index - 1], line[index]);
    }
    double rest = length / 2;
    for (std::size_t index = 1; index < line.size(); ++index) {
        const double step = distance(line[index - 1], line[index]);
        if (step > 0 && step >= rest) {
            const double part = rest / step;
            return {line[index - 1].x + (line[index].x - line[index - 1].x) * part,
                    line[index - 1].y + (line[index].y - line[index - 1].y) * part};
        }
        rest -= step;
    }
    return line.front();
}

} // namespace layout
