#pragma once

class KelConcreteType;
class KelDerivedType;
class KelString;

/// The types that a C++ conversion has made, by data type, name and length.
///
/// A walk through the conversion model by index would find the same one: types of one name stand there in the order
/// of adding, and a type is noted here, once its fields are final, before the next one of its name is added; so the
/// first one noted under a key is the first one that the walk would meet. Base types and declared types are never
/// an answer and are not noted.
namespace rose::ConvertedTypes {

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

} // namespace rose::ConvertedTypes
