#pragma once

class KelAttribute;
class KelClass;

namespace rose {

/// Adds an attribute that belongs to nothing to the class, at the place behind those the class has. If the class
/// has one of that name, the attribute is deleted and the class's own stands in for it. Returns the attribute that
/// is the class's now.
KelAttribute* placeAttribute(KelAttribute& attribute, KelClass& owner);

} // namespace rose
