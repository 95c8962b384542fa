#pragma once

#include "host/model/KelConcreteType.h"

/// A type that is not made from another.
class KEL_API KelBaseType final : public KelConcreteType {
public:
    KelBaseType();
    ~KelBaseType() override;
};
