#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelDesignPackage;
class KelDiagram;

/// An element of a design package, which owns it: the base of classes and relationships. Diagrams refer to it.
class KEL_API KelModelElement : public KelModelObject {
public:
    ~KelModelElement() override;

    /// Puts the element on a diagram: as `KelDiagram::addModelElement`.
    bool addDiagram(KelDiagram* diagram);
    /// Takes the element off the diagram at `index` of `diagrams`.
    bool removeDiagram(int index) noexcept;
    [[nodiscard]] KelLinks<KelDiagram> diagrams() const { return KelLinks<KelDiagram>(diagrams_); }
    [[nodiscard]] KelDesignPackage* getDesignPackage() const;
    /// Takes the element out of its package.
    bool removeDesignPackage() noexcept;

protected:
    using KelModelObject::KelModelObject;

private:
    friend struct KelRelations;
    KelOne designPackage_;
    KelMany diagrams_;
};
