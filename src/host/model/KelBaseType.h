#pragma once

#include "host/model/KelConcreteType.h"

/// A type that is not derived from another, such as "int". `createBaseType` makes one with its data type.
class KEL_API KelBaseType final : public KelConcreteType {
public:
    KelBaseType();
    ~KelBaseType() override;
};
