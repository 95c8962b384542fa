#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelDesignPackage;
class KelModelElement;

/// A diagram: it refers to the model elements drawn on it, in the order in which they were drawn.
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
