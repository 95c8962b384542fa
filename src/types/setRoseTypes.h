#pragma once

class KelArgument;
class KelAttribute;
class KelBaseType;
class KelModel;
class KelType;

namespace rose {

/// Replaces every declared type of the model, whose name is the text that the modeller wrote, by a type of the target
/// system that the option "Supported types" chooses, moves its users there, and leaves in the model only types that
/// something refers to. PRECONDITION: every type of the model is a `KelDerivedType`, as the builder makes them.
void setRoseTypes(KelModel* model);

// The parts that the converters of the target systems share.

// The logical base types that converted types derive from. Each `setRoseTypes` makes them; meaningless afterwards.
extern KelBaseType* undefined;
extern KelBaseType* charBase;
extern KelBaseType* intBase;
extern KelBaseType* numberBase;
extern KelBaseType* binBase;

/// The base type that a type of that SQL data type derives from; the binary one when no other is meant.
[[nodiscard]] KelBaseType* getBaseType(const char* sqlDataType);

/// How many links the attribute has: to its class, its type, its role name maps and its keys.
[[nodiscard]] unsigned int AttributeIsReferenced(const KelAttribute& attribute);

/// How many links the argument has: to its operation, its class and its type.
[[nodiscard]] unsigned int ArgumentIsReferenced(const KelArgument& argument);

/// Takes the first attribute away from its type. Null, and the attribute stays untyped, when only that type referred to
/// it.
KelAttribute* takeFirstAttribute(KelType& from);

} // namespace rose
