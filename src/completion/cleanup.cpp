#include "completion/cleanup.h"

#include "builder/BuilderState.h"
#include "builder/Unattached.h"
#include "builder/indexes/Containers.h"
#include "builder/indexes/NoteTexts.h"
#include "builder/indexes/PackageClasses.h"
#include "builder/indexes/QuidRegistry.h"
#include "builder/indexes/Relationships.h"
#include "completion/KelResetGeneralPointer.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelClass.h"
#include "host/model/KelModel.h"

#include <cstdio>
#include <utility>

namespace rose {

namespace {

void dropIndexes() noexcept {
    clearContainerIndexes();
    clearRelationshipIndexes();
    NoteTexts::clear();
    PackageClasses::clear();
    QuidRegistry::clear();
}

void freeNotes() noexcept {
    for (int index = 0; index < toBeNotes.getCount(); ++index) {
        delete static_cast<const NoteRecord*>(toBeNotes[index]);
    }
    toBeNotes.empty();
}

/// Empties a list of model elements that wait; those that have found no package meanwhile are the list's own and
/// are deleted.
template <class Element>
void emptyWaiting(KelLinkTree& waiting) noexcept {
    while (KelRBTree::Node* node = waiting.lastNode()) {
        const auto* element = static_cast<const Element*>(KelRBTree::element(node));
        waiting.removeNode(node);
        if (element->getDesignPackage() == nullptr) {
            delete element;
        }
    }
}

} // namespace

void cleanup() {
    // The indexes hold on to the quids that the traversal frees.
    dropIndexes();
    KelResetGeneralPointer reset;
    aModel->depthTraversal(reset, nullptr);
    freeNotes();
    emptyWaiting<KelClass>(toBeClasses);
    emptyWaiting<KelAssociation>(toBeAssociations);
    packages.empty();
    deleteUnattached();
    if (std::FILE* file = std::exchange(theFile, nullptr); file != nullptr) {
        std::fclose(file);
    }
}

} // namespace rose
