#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelType;

/// A feature of a classifier. Refers to its type; when that is deleted, the feature has none.
class KEL_API KelFeature : public KelModelObject {
public:
    ~KelFeature() override;

    /// Sets the type, replacing an earlier one.
    bool addType(KelType* type);
    [[nodiscard]] KelType* getType() const;

protected:
    using KelModelObject::KelModelObject;

private:
    friend struct KelRelations;
    KelOne type_;
};

/// A feature that holds a value.
class KEL_API KelStructuralFeature : public KelFeature {
protected:
    using KelFeature::KelFeature;
};
