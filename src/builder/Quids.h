#pragma once

namespace rose {

/// The "quid" line: the first one of the active association becomes its quid, and a placeholder that waits under
/// it is merged into the association. Quids of other objects are not kept.
void SetQuid(char* quid);

/// The "Parent_View" line: a view number for the note being read, the active object, or the next association.
/// The number of a compartment is skipped.
void CreateToolID(char* text);

} // namespace rose
