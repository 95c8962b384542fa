#pragma once

namespace rose {

/// Repairs what the model file allows and the repository does not, in every package that was opened: untyped
/// features become "int", attributes of several keys are split, incomplete generalizations and associations are
/// deleted. `aBaseType` is the type "int" afterwards, or null when nothing uses it.
void ValidateModel();

} // namespace rose
