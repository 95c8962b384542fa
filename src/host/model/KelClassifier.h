#pragma once

#include "host/model/KelModelElement.h"

/// A model element that describes a set of objects: the base of classes and joins.
class KEL_API KelClassifier : public KelModelElement {
protected:
    using KelModelElement::KelModelElement;
};
