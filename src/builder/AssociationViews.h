#pragma once

namespace rose {

/// Begins the view of an association, whose "quidu" tells which one it shows.
void CreateAssociationInView(char* name);

/// The "quidu" of an association view: places the association of that quid on the current diagram; one that has
/// not been read yet is stood in for by the view's own until it is.
void ConnectAssociationToDiagram(char* quid);

} // namespace rose
