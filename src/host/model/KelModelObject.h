#pragma once

#include "host/model/KelElement.h"

#include <cstdint>

/// An object that is part of a model: the base of all classes that a modeller works with.
class KEL_API KelModelObject : public KelElement {
public:
    std::int32_t toolId = 0; // for the code that builds the model; 0 after an import; neither copied nor compared
    KelString description;   // the modeller's documentation
    KelString physicalName;  // the name in the target system; an import sets it for types

protected:
    using KelElement::KelElement;
};
