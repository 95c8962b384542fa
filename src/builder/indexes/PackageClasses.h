#pragma once

class KelClass;
class KelString;

/// The classes of the packages in `packages`, by name.
///
/// A walk through the packages in the order of their creation would find the same class: a class enters a package
/// in `CreateClass` alone, which makes one only if no package has a class of that name, and names of classes do
/// not change during an import. So there is one class of a name at the most, whatever the order of the walk.
namespace rose::PackageClasses {

void add(KelClass& added);
[[nodiscard]] KelClass* find(const KelString& name);
void forget(const KelClass& deleted) noexcept;
void clear() noexcept;

} // namespace rose::PackageClasses
