#pragma once

class KelString;

namespace rose {

/// Gives every class that still waits for its definition a home in the package "Use Case Classes in Class
/// Diagrams", in name order; none waits afterwards. Makes no package when none waits.
void checkToBeClasses();

/// Whether a class of that name still waits. Logs the name each time.
[[nodiscard]] bool findClassInRemainingFoodStuffs(const KelString& name);

} // namespace rose
