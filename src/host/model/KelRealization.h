#pragma once

#include "host/model/KelRelationship.h"

class KelClass;

/// A realization: one class realizes what another specifies.
class KEL_API KelRealization final : public KelRelationship {
public:
    KelRealization();
    ~KelRealization() override;

    /// Each makes the class that end in place of an earlier one.
    bool addRealizationClass(KelClass* realization);
    [[nodiscard]] KelClass* getRealizationClass() const;
    bool addSpecificationClass(KelClass* specification);
    [[nodiscard]] KelClass* getSpecificationClass() const;

private:
    friend struct KelRelations;
    KelOne realizationClass_;
    KelOne specificationClass_;
};
