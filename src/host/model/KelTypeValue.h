#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelDerivedType;

/// One value of an enumerated type, which owns it.
class KEL_API KelTypeValue final : public KelModelObject {
public:
    KelTypeValue();
    ~KelTypeValue() override;

    [[nodiscard]] KelDerivedType* getDerivedType() const;
    void setValue(const KelString& text) { value = text; }
    [[nodiscard]] const KelString& getValue() const { return value; }

    KelString value;
    std::int16_t position = 0; // 0-based place in the order of adding

private:
    friend struct KelRelations;
    KelOne derivedType_;
};
