#pragma once

#include <map>
#include <utility>

class KelClass;
class KelClassDiagram;

namespace exporter {

/// Where the class diagrams of a model file show its classes, for formats that can place boxes. The objects are only
/// keys. A lookup takes logarithmic time; reading it from several threads is safe.
class DrawnPositions {
public:
    /// In points, 72 to an inch; `x` and `y` are the middle, with y downwards.
    struct Box {
        double x;
        double y;
        double width;
        double height;
    };

    /// Does nothing when the diagram has the class already.
    void add(const KelClassDiagram& diagram, const KelClass& shown, const Box& box) {
        boxes_.try_emplace({&diagram, &shown}, box);
    }
    /// Null when the file does not place the class on the diagram.
    [[nodiscard]] const Box* find(const KelClassDiagram& diagram, const KelClass& shown) const {
        const auto found = boxes_.find({&diagram, &shown});
        return found != boxes_.end() ? &found->second : nullptr;
    }

private:
    std::map<std::pair<const KelClassDiagram*, const KelClass*>, Box> boxes_;
};

} // namespace exporter
