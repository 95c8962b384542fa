#pragma once

class KelAssociation;
class KelClass;
class KelDiagram;
class KelGeneralization;

/// The steps between the scan and the conversion of types. They change the model of the builder's state, and throw
/// `std::bad_alloc` and what the observer throws.
namespace rose {

/// Moves every class that still waits for its definition into the package "Use Case Classes in Class Diagrams", in
/// name order; none waits afterwards. Makes no package when none waits.
void checkToBeClasses();

/// Repairs models that the file format permits and the repository does not, in every package that was opened: untyped
/// features become "int", attributes of several keys are split, incomplete generalizations and associations are
/// deleted. `aBaseType` is the type "int" afterwards, or null when nothing uses it.
void ValidateModel();

/// Splits the attributes of the class that belong to several keys: each further key gets a private copy, named
/// "name/1", "name/2" and so on, and a foreign key a role name map from the attribute to the copy. An attribute of the
/// class key and one foreign key may stay shared.
void ValidateAttributes(KelClass* validated);

/// Deletes the association, with the qualifiers and keys made for it, unless it has two roles and each has a class;
/// returns whether it did. The keys of an aggregation also join the key of the class that they are in, and a role's
/// mark for having no name is cleared.
bool ValidateAssociation(KelAssociation* association);

} // namespace rose
