#pragma once

class KelModel;

namespace rose {

/// Replaces every declared type of the model, whose name is the text that the modeller wrote, by a type of the
/// target system that the option "Supported types" chooses, moves its users there, and leaves in the model only
/// what something refers to. PRECONDITION: every type of the model is a `KelDerivedType`, as the builder makes them.
void setRoseTypes(KelModel* model);

} // namespace rose
