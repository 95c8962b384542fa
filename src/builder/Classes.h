#pragma once

#include "host/model/KelClassCategoryType.h"

namespace rose {

/// Begins the class of an "(object Class" or one of its kin: the class of that simple name if there is one, else
/// a new one. `name` may be qualified.
void CreateClass(char* name, KelClassCategoryType category);

/// The "stereotype" of a class or package. A class with the stereotype "Interface" is an interface. A null or
/// empty text does nothing.
void AddStereotypeToClass(char* text);

/// The "label" of a generalization or dependency, which becomes its name. A null or empty text does nothing.
void AddLabel(char* text);

} // namespace rose
