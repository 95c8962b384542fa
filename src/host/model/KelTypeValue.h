#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelDerivedType;

/// One literal of an enumerated type, which owns it. The literal is the object's name; its value, if any, is a field.
class KEL_API KelTypeValue final : public KelModelObject {
public:
    KelTypeValue();
    ~KelTypeValue() override;

    [[nodiscard]] KelDerivedType* getDerivedType() const;
    void setValue(const KelString& text) { value = text; }
    [[nodiscard]] const KelString& getValue() const { return value; }

    KelString value;
    std::int16_t position = 0; // index in the order of adding, from 0; set by the code that adds

private:
    friend struct KelRelations;
    KelOne derivedType_;
};
