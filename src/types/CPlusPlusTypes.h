#pragma once

#include "host/text/KelString.h"

#include <array>
#include <string_view>

class KelConcreteType;
class KelDerivedType;
class KelModel;
class KelString;

namespace rose {

/// A C++ spelling and what it stands for. A spelling is looked up by the first row whose key it begins with.
struct RoseTypeRow {
    const char* key;
    const char* value;
};

/// From a C++ spelling to the name of its logical base type; ended by a row of null texts.
extern const std::array<RoseTypeRow, 20> RosePhysicalToLogical;

/// From a C++ spelling to its SQL data type; ended by a row whose key is "undefined".
extern const std::array<RoseTypeRow, 20> RosePhysicalToPhysical;

/// The value of the first row before the end of the table whose key is a prefix of the spelling, or null.
[[nodiscard]] const char* findRoseType(const std::array<RoseTypeRow, 20>& table, std::string_view spelling);

/// What a C++ spelling such as char[20] says of the type to make for it.
struct CPlusPlusSpelling {
    KelString text;
    KelString logicalName; // the name of its base type, or the text itself
    KelString sqlType;     // its SQL data type, or "undefined"
    int length = 0;        // of an array
};

[[nodiscard]] CPlusPlusSpelling readSpelling(const KelString& text);

/// The types that a C++ conversion has made, by data type, name and length.
///
/// A walk through the conversion model by index would find the same one: types of one name stand there in the order
/// of adding, and a type is noted here, once its fields are final, before the next one of its name is added; so the
/// first one noted under a key is the first one that the walk would meet. Base types and declared types are never
/// an answer and are not noted.
namespace ConvertedTypes {

/// The notes of one conversion; they are forgotten at both ends of its life.
class Scope {
public:
    Scope() noexcept;
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope();
};

/// Notes a type whose data type, name and length no longer change.
void note(KelDerivedType& made);
/// The first one noted with these values, or null.
[[nodiscard]] KelDerivedType* find(const KelString& dataType, const KelString& name, int length);

} // namespace ConvertedTypes

/// The type of the conversion model that replaces the declared type, which the declared type's values and attributes
/// in use have moved to; attributes held by reference may have moved to a type of their own. The declared type joins
/// the conversion model, which owns it.
KelConcreteType* convertCPLUSPLUStype(KelModel* conversion, KelDerivedType* declared);

} // namespace rose
