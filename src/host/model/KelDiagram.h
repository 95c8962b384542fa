#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelDesignPackage;
class KelModelElement;

/// A diagram, which a design package owns. Refers to the model elements drawn on it, in the order of adding; an element
/// may be on any number of diagrams, and at most once on each.
class KEL_API KelDiagram : public KelModelObject {
public:
    ~KelDiagram() override;

    bool addModelElement(KelModelElement* element);
    bool removeModelElement(KelModelElement* element) noexcept;
    [[nodiscard]] KelLinks<KelModelElement> modelElements() const { return KelLinks<KelModelElement>(modelElements_); }
    [[nodiscard]] KelDesignPackage* getDesignPackage() const;

protected:
    using KelModelObject::KelModelObject;

private:
    friend struct KelRelations;
    KelMany modelElements_;
    KelOne designPackage_;
};
