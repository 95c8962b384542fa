#pragma once

class KelClass;

namespace rose {

/// Gives `aBaseType` to every attribute and argument of the class that has no type, and to every operation that
/// returns none.
void ValidateTypes(KelClass* validated);

} // namespace rose
