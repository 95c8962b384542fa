#pragma once

#include "export/modelParts.h"

class KelModel;

namespace exporter {

/// Hears of what a walk comes across. The model must not change during the walk.
class ModelVisitor {
public:
    virtual ~ModelVisitor() = default;
    virtual void enter(const KelObject& object) = 0;
    /// Frames the objects of one part of the object entered last. A part without objects is not reported.
    virtual void startPart(const Part& part) = 0;
    virtual void endPart(const Part& part) = 0;
    virtual void leave(const KelObject& object) = 0;
};

/// Walks the model and what is written inside it, depth first. Takes heap, not stack, for the model's depth.
void walkModel(const KelModel& model, PartsOf partsOf, ModelVisitor& visitor);

} // namespace exporter
