#pragma once

namespace rose {

/// Begins a qualifier of the current role: an attribute of the role's class that joins its primary key, and a
/// shadow of it in the class at the other end that joins a foreign key. Does nothing unless the role has a class.
void CreateKeyAttribute(char* name);

} // namespace rose
