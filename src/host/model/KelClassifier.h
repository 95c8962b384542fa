#pragma once

#include "host/model/KelModelElement.h"

/// A model element that classifies things: a class or a join.
class KEL_API KelClassifier : public KelModelElement {
protected:
    using KelModelElement::KelModelElement;
};
