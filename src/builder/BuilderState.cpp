#include "builder/BuilderState.h"

#include "builder/Associations.h"
#include "builder/Classes.h"
#include "builder/Quids.h"
#include "builder/Relationships.h"
#include "builder/Unattached.h"
#include "builder/indexes/ContainerIndex.h"
#include "builder/indexes/WaitingNodes.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"
#include "host/model/KelType.h"

namespace rose {

BuilderState state;

namespace {

/// Sets every pointer that points to the object to null.
template <class... Pointers>
void forgetIn(const KelObject& object, Pointers&... pointers) noexcept {
    ((pointers = pointers == &object ? nullptr : pointers), ...);
}

} // namespace

void startBuilding(KelModel& model, KelLog& log, const KelOptionList* options) {
    state = BuilderState();
    state.aModel = &model;
    state.localLog = &log;
    state.theOptions = options;
}

void ImportWatch::deleting(KelObject& object) noexcept {
    auto& [package, logicalView, diagram, aClass, attribute, shadow, operation, kept, argument, type, association, role,
           candidateKey, foreignKey, generalization, realization, dependency, active] =
        static_cast<CurrentObjects&>(state);
    forgetIn(object, package, logicalView, diagram, aClass, attribute, shadow, operation, kept, argument, type,
             association, role, candidateKey, foreignKey, generalization, realization, dependency, active);
    forgetUnattached(object);
    if (!object.isInstanceOf(KelElementType::modelElement)) {
        return;
    }
    auto& element = static_cast<KelModelElement&>(object);
    forgetElement(element);
    forgetRelationships(element);
    if (object.elementType == KelElementType::classObject) {
        state.toBeClasses.remove(static_cast<KelClass&>(object));
        PackageClasses::forget(static_cast<KelClass&>(object));
    } else if (object.elementType == KelElementType::association) {
        AggregateRoles::forget(static_cast<KelAssociation&>(object));
        WaitingNodes::remove(state.toBeAssociations, element);
        QuidRegistry::forget(static_cast<KelAssociation&>(object));
    }
}

void clearIndexes() noexcept {
    clearContainerIndexes();
    clearRelationshipIndexes();
    clearNoteIndex();
    AggregateRoles::clear();
    PackageClasses::clear();
    QuidRegistry::clear();
    WaitingNodes::clear();
}

} // namespace rose
