#pragma once

#include "host/model/KelPackage.h"

class KelDiagram;
class KelModelElement;

/// A package of model elements and diagrams, both of which it owns, besides its child packages.
class KEL_API KelDesignPackage final : public KelPackage {
public:
    KelDesignPackage();
    ~KelDesignPackage() override;

    bool addModelElement(KelModelElement* element);
    [[nodiscard]] KelLinks<KelModelElement> modelElements() const { return KelLinks<KelModelElement>(modelElements_); }
    bool addDiagram(KelDiagram* diagram);
    [[nodiscard]] KelLinks<KelDiagram> diagrams() const { return KelLinks<KelDiagram>(diagrams_); }

    KelString stereotype;

private:
    friend struct KelRelations;
    KelMany modelElements_;
    KelMany diagrams_;
};
