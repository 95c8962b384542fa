#pragma once

#include "host/text/KelString.h"

class KelConcreteType;
class KelDerivedType;
class KelModel;

namespace rose {

/// The type of the conversion model that replaces the declared type, whose values and referenced attributes move there;
/// attributes held by reference may move to another new type. The caller keeps the declared type. PRECONDITION: no two
/// declared types of a conversion have the same name.
KelConcreteType* convertCPLUSPLUStype(KelModel* conversion, KelDerivedType* declared);

/// The properties of the type to make for a C++ spelling such as char[20].
struct CPlusPlusSpelling {
    KelString text;
    KelString logicalName; ///< the name of its base type, or the text itself
    KelString sqlType;     ///< its SQL data type, or "undefined"
    int length = 0;        ///< of an array
};

[[nodiscard]] CPlusPlusSpelling readSpelling(const KelString& text);

/// The types that a C++ conversion has made and may find again, by data type, name and length. A lookup costs O(1).
///
/// Equivalent to a linear search of the conversion model: types of equal name are stored in insertion order, and each
/// is registered here, once its fields are final, before the next of that name is added. The first match here is
/// therefore the first match there. Base types and declared types are never a match and are not registered.
///
/// A type of another name than a logical one is looked up by its own declared type only, and by then with the data type
/// of references; so most types are not registered, and many types do not need memory here.
namespace ConvertedTypes {

/// The life of one conversion; the types are forgotten at its end.
class Scope {
public:
    Scope() = default;
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope();
};

/// Registers a type whose data type, name and length no longer change, if it may be looked up.
void note(KelDerivedType& made);
/// The first one registered with these values, or null.
[[nodiscard]] KelDerivedType* find(const KelString& dataType, const KelString& name, int length);

} // namespace ConvertedTypes

} // namespace rose
