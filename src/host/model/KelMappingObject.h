#pragma once

#include "host/model/KelElement.h"

/// The base of the classes that describe how one model maps to another. They are part of the repository's interface; no
/// import makes such objects, and no class owns them.
class KEL_API KelMappingObject : public KelElement {
protected:
    using KelElement::KelElement;
};

/// The mapping of one classifier to another.
class KEL_API KelClassifierMap final : public KelMappingObject {
public:
    KelClassifierMap();
    ~KelClassifierMap() override;
};

/// The derivation of a value from others.
class KEL_API KelTransformation final : public KelMappingObject {
public:
    KelTransformation();
    ~KelTransformation() override;
};
