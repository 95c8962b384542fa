#pragma once

#include "host/model/KelModelElement.h"

/// A model element that connects classes.
class KEL_API KelRelationship : public KelModelElement {
protected:
    using KelModelElement::KelModelElement;
};
