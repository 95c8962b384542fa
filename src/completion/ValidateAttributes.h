#pragma once

class KelClass;

namespace rose {

/// Splits the attributes of the class that take part in several keys: each further key gets a private copy, named
/// "name/1", "name/2" and so on, and a foreign key a role name map that says what the copy stands for. An attribute
/// of the class key and one foreign key may stay shared.
void ValidateAttributes(KelClass* validated);

} // namespace rose
