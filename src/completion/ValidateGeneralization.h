#pragma once

class KelDiagram;
class KelGeneralization;

namespace rose {

/// Deletes the generalization unless it has both ends and their classes are known; true when it has. A deleted
/// one leaves every diagram by itself, so `diagram` need not be given.
bool ValidateGeneralization(KelGeneralization* generalization, KelDiagram* diagram);

} // namespace rose
