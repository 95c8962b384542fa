#pragma once

#include "host/model/KelElement.h"

/// The root of the classes that say how one model maps to another.
class KEL_API KelMappingObject : public KelElement {
protected:
    using KelElement::KelElement;
};

/// How one classifier maps to another.
class KEL_API KelClassifierMap final : public KelMappingObject {
public:
    KelClassifierMap();
    ~KelClassifierMap() override;
};

/// How a value is made from others.
class KEL_API KelTransformation final : public KelMappingObject {
public:
    KelTransformation();
    ~KelTransformation() override;
};
