#pragma once

class KelAttribute;
class KelClass;

namespace rose {

/// Begins an attribute: of the current class, or, inside a role's keys, of nothing until its caller places it. An
/// attribute whose name the class has already is refused without a message and belongs to nothing.
void CreateAttribute(char* name);

/// Begins a qualifier of the current role: an attribute of the role's class that joins its primary key, and a shadow
/// of it in the class at the other end that joins a foreign key. Does nothing unless the role has a class.
void CreateKeyAttribute(char* name);

/// The "initv" of the active attribute (and its shadow) or argument.
void SetInitialValue(char* text);

/// Adds an attribute that belongs to nothing to the class, after its other attributes. If the class has one of that
/// name, the attribute is deleted, and the class's own takes its place. Returns the attribute that the class has now.
KelAttribute* placeAttribute(KelAttribute& attribute, KelClass& owner);

} // namespace rose
