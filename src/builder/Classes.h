#pragma once

#include "host/model/KelClassCategoryType.h"

class KelClass;
class KelModelObject;
class KelString;

namespace rose {

/// Begins the class of an "(object Class" or one of its variants: the class of that simple name if there is one, else
/// a new one. `name` may be qualified.
void CreateClass(char* name, KelClassCategoryType category);

/// The "stereotype" of a class or package. A class with the stereotype "Interface" is an interface. A null or empty
/// text does nothing.
void AddStereotypeToClass(char* text);

/// The "label" of a generalization or dependency, which becomes its name. A null or empty text does nothing.
void AddLabel(char* text);

/// The simple name within a qualified one: the text after the last "::", provided that "Logical View::" occurs
/// anywhere in the text; else the whole text. Points into `text`.
[[nodiscard]] char* stripDoubleColon(char* text);
[[nodiscard]] const char* stripDoubleColon(const char* text);

/// The class of that simple name: the one in a package if there is one, else the first that waits in `toBeClasses`,
/// which it leaves if `remove` is not 0; or null.
[[nodiscard]] KelClass* findAClass(const char* name, int remove);

/// The first class of that name in a design package or on a diagram, or null.
[[nodiscard]] KelClass* getClassFromViewelement(KelModelObject* container, const KelString& name);

/// A new class of that name that waits in `toBeClasses` for its definition.
[[nodiscard]] KelClass* createWaitingClass(const char* name);

/// The classes of the packages in `packages`, by name. A lookup costs O(1).
///
/// Equivalent to a search of the packages in the order of their creation: a class enters a package in `CreateClass`
/// alone, which makes one only if no package has a class of that name, and names of classes do not change during an
/// import. So at most one class has a given name, whatever the order of the search.
namespace PackageClasses {

void add(KelClass& added);
[[nodiscard]] KelClass* find(const KelString& name);
void forget(const KelClass& deleted) noexcept;
void clear() noexcept;

} // namespace PackageClasses

} // namespace rose
