#pragma once

#include "host/model/KelElement.h"

#include <cstdint>

/// An object that is part of a model.
class KEL_API KelModelObject : public KelElement {
public:
    std::int32_t toolId = 0; // for the use of whoever builds the model; 0 after an import; not copied
    KelString description;   // documentation
    KelString physicalName;

protected:
    using KelElement::KelElement;
};
