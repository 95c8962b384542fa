#pragma once

#include "host/model/KelObject.h"

#include <span>
#include <vector>

class KelModel;

namespace exporter {

/// One collection of elements that exports write within their owner.
struct Part {
    const char* member; // the JSON member that lists them
    /// Appends those of `owner` in the order in which they are written. `owner` must be of the class that has the part.
    void (*collect)(const KelObject& owner, std::vector<const KelObject*>& into);
};

/// The parts that are written within an owner, in this order.
using PartsOf = std::span<const Part> (*)(const KelObject& owner);

/// The order of the JSON document.
[[nodiscard]] std::span<const Part> documentParts(const KelObject& owner);
/// Of those the parts of the model and its packages, which have all packages and classes.
[[nodiscard]] std::span<const Part> packageParts(const KelObject& owner);
/// The order of the outline: types come last, and the line of an operation includes its arguments.
[[nodiscard]] std::span<const Part> outlineParts(const KelObject& owner);

/// Receives the elements of a walk. The object entered last, and not left yet, owns what comes next.
class ModelVisitor {
public:
    virtual ~ModelVisitor() = default;
    virtual void enter(const KelObject& object) = 0;
    /// Called before and after the elements of one part; not called for an empty part.
    virtual void startPart(const Part& /*part*/) {}
    virtual void endPart(const Part& /*part*/) {}
    virtual void leave(const KelObject& /*object*/) {}
};

/// Visits the model and the elements in it, depth first. Passes on what the visitor throws. The model must not change
/// meanwhile. Takes heap, not stack, for the depth of the model.
void walkModel(const KelModel& model, PartsOf partsOf, ModelVisitor& visitor);

} // namespace exporter
