#pragma once

#include "host/model/KelRelationship.h"

class KelClass;

/// A realization: one class implements what another specifies. It refers to both; the package that it is in owns it.
class KEL_API KelRealization final : public KelRelationship {
public:
    KelRealization();
    ~KelRealization() override;

    /// Each sets the class at that end, replacing an earlier one.
    bool addRealizationClass(KelClass* realization);
    [[nodiscard]] KelClass* getRealizationClass() const;
    bool addSpecificationClass(KelClass* specification);
    [[nodiscard]] KelClass* getSpecificationClass() const;

private:
    friend struct KelRelations;
    KelOne realizationClass_;
    KelOne specificationClass_;
};
