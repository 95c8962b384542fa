#pragma once

#include "host/model/KelModelElement.h"

/// A model element that connects classes: the base of associations, generalizations, realizations and dependencies.
class KEL_API KelRelationship : public KelModelElement {
protected:
    using KelModelElement::KelModelElement;
};
