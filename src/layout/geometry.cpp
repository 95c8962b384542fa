#include "layout/geometry.h"

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
