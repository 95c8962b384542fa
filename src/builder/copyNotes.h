#pragma once

class KelElement;

namespace rose {

/// Attaches a copy of every note of the first element to the second.
void copyNotes(const KelElement& from, KelElement& to);

} // namespace rose
