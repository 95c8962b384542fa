#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

/// A package: it owns child packages. The first parent that a package is given keeps it.
class KEL_API KelPackage : public KelModelObject {
public:
    ~KelPackage() override;

    /// Refuses, beside what every owner refuses, a package that this one is in.
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
