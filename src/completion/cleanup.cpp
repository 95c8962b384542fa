#include "completion/cleanup.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "builder/indexes/AggregateRoles.h"
#include "builder/indexes/Containers.h"
#include "builder/indexes/NoteTexts.h"
#include "builder/indexes/PackageClasses.h"
#include "builder/indexes/QuidRegistry.h"
#include "builder/indexes/Relationships.h"
#include "builder/indexes/WaitingNodes.h"
#include "completion/KelResetGeneralPointer.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelClass.h"
#include "host/model/KelModel.h"

#include <cstdio>
#include <new>
#include <utility>

namespace rose {

namespace {

void dropIndexes() noexcept {
    clearContainerIndexes();
    clearRelationshipIndexes();
    AggregateRoles::clear();
    NoteTexts::clear();
    PackageClasses::clear();
    QuidRegistry::clear();
    WaitingNodes::clear();
}

void freeNotes() noexcept {
    for (int index = 0; index < state.toBeNotes.getCount(); ++index) {
        delete static_cast<const NoteRecord*>(state.toBeNotes[index]);
    }
    state.toBeNotes.empty();
}

/// Empties a list of model elements that wait; those that have found no package meanwhile are the list's own and
/// are deleted.
template <class Element>
void emptyWaiting(KelLinkTree& waiting) noexcept {
    while (KelRBTree::Node* node = waiting.lastNode()) {
        auto* element = static_cast<Element*>(const_cast<void*>(KelRBTree::element(node)));
        waiting.removeNode(node);
        if (element->getDesignPackage() == nullptr) {
            trace::removing(*element, KelImportReason::supplierUnknown);
            delete element;
        }
    }
}

/// Removes from the model what the builder has hung on its objects; false when there is no memory to walk it.
bool resetModel() noexcept {
    try {
        KelResetGeneralPointer reset;
        state.aModel->depthTraversal(reset, nullptr);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace

void cleanup() {
    // The indexes hold on to the quids that the traversal frees.
    dropIndexes();
    const bool isReset = resetModel();
    freeNotes();
    emptyWaiting<KelClass>(state.toBeClasses);
    emptyWaiting<KelAssociation>(state.toBeAssociations);
    state.packages.empty();
    deleteUnattached();
    if (std::FILE* file = std::exchange(state.theFile, nullptr); file != nullptr) {
        std::fclose(file);
    }
    if (!isReset) {
        state.aModel->recursiveDelete(); // every object that is deleted frees its quid
        throw std::bad_alloc();
    }
}

} // namespace rose
