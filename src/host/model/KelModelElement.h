#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelDesignPackage;
class KelDiagram;

/// An element of a design package, which owns it, and of the diagrams that show it.
class KEL_API KelModelElement : public KelModelObject {
public:
    ~KelModelElement() override;

    bool addDiagram(KelDiagram* diagram);
    bool removeDiagram(int index) noexcept;
    [[nodiscard]] KelLinks<KelDiagram> diagrams() const { return KelLinks<KelDiagram>(diagrams_); }
    [[nodiscard]] KelDesignPackage* getDesignPackage() const;
    /// Takes the element out of its package; the caller then owns it.
    bool removeDesignPackage() noexcept;

protected:
    using KelModelObject::KelModelObject;

private:
    friend struct KelRelations;
    KelOne designPackage_;
    KelMany diagrams_;
};
