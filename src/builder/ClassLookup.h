#pragma once

class KelClass;
class KelModelObject;
class KelString;

namespace rose {

/// The simple name within a qualified one: what follows the last "::", provided that "Logical View::" occurs
/// anywhere in the text; else the whole text. Points into `text`.
[[nodiscard]] char* stripDoubleColon(char* text);
[[nodiscard]] const char* stripDoubleColon(const char* text);

/// The class of that simple name: the one in a package if there is one, else the first that waits in
/// `toBeClasses`, which it leaves if `remove` is not 0; or null.
[[nodiscard]] KelClass* findAClass(const char* name, int remove);

/// The first class of that name in a design package or on a diagram, or null.
[[nodiscard]] KelClass* getClassFromViewelement(KelModelObject* container, const KelString& name);

/// A new class of that name that waits in `toBeClasses` for its definition.
[[nodiscard]] KelClass* createWaitingClass(const char* name);

} // namespace rose
