#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

/// A package, which owns its child packages: the base of models and design packages.
class KEL_API KelPackage : public KelModelObject {
public:
    ~KelPackage() override;

    /// Also refuses this package itself and any package that contains it. Costs as many steps as this package is deep
    /// when the child has children.
    bool addChildPackage(KelPackage* package);
    [[nodiscard]] KelLinks<KelPackage> childPackages() const { return KelLinks<KelPackage>(childPackages_); }
    [[nodiscard]] KelPackage* getParentPackage() const;

protected:
    using KelModelObject::KelModelObject;

private:
    friend struct KelRelations;
    KelMany childPackages_;
    KelOne parentPackage_;
};
