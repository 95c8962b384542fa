#pragma once

class KelString;
class KelType;

namespace rose {

/// The model's first type of that name, or null. Costs O(log n).
[[nodiscard]] KelType* findType(const KelString& name);

/// The model's type of that name; a new derived, user-defined one if there is none.
[[nodiscard]] KelType* findOrCreateType(const char* name);

} // namespace rose
