#include "builder/Relationships.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "builder/indexes/Containers.h"
#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"

#include <memory>

namespace rose {

namespace {

/// Makes a new relationship of the current class current, the only one of the three kinds. `link` makes the class
/// its client end.
template <class Relationship>
void createRelationship(Relationship*& current, bool (Relationship::*link)(KelClass*)) {
    state.aGeneral = nullptr;
    state.aRealization = nullptr;
    state.aDependency = nullptr;
    auto made = std::make_unique<Relationship>();
    ((*made).*link)(state.aClass);
    current = attach(std::move(made), [](Relationship* added) { return place(*state.aPackage, *added); });
    state.activeObject = current;
    state.InNoteView = false;
}

} // namespace

void CreateGeneralization() {
    createRelationship(state.aGeneral, &KelGeneralization::addSubtypeClass);
}

void CreateRealization() {
    createRelationship(state.aRealization, &KelRealization::addRealizationClass);
}

void CreateDependency() {
    createRelationship(state.aDependency, &KelDependency::addClientClass);
}

} // namespace rose
