#include "completion/cleanup.h"

#include "builder/BuilderState.h"
#include "builder/Notes.h"
#include "builder/Unattached.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelClass.h"
#include "host/model/KelModel.h"
#include "host/model/KelModelObject.h"
#include "host/model/KelTraversalOperation.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <utility>
#include <vector>

namespace rose {

namespace {

/// Removes from each visited object the quid text and the view number that the builder has hung on it.
class KelResetGeneralPointer final : public KelTraversalOperation {
public:
    void post_process(KelObject* object, void* /*userData*/) override {
        delete static_cast<KelString*>(object->generalPointer);
        if (object->isInstanceOf(KelElementType::modelObject)) {
            static_cast<KelModelObject*>(object)->toolId = 0;
        }
        object->generalPointer = nullptr;
    }
};

void freeNotes() noexcept {
    for (int index = 0; index < state.toBeNotes.getCount(); ++index) {
        delete static_cast<const NoteRecord*>(state.toBeNotes[index]);
    }
    state.toBeNotes.empty();
}

/// Deletes an element that has waited in a list until the end, unless it has found a package meanwhile.
void deleteWaiting(KelModelElement& element) noexcept {
    if (element.getDesignPackage() == nullptr) {
        trace::removing(element, KelImportReason::supplierUnknown);
        delete &element;
    }
}

/// Empties the lists of waiting elements, the last ones first.
void emptyWaiting() noexcept {
    const std::vector<KelClass*> classes = state.toBeClasses.takeByName();
    std::for_each(classes.rbegin(), classes.rend(), [](KelClass* waiting) { deleteWaiting(*waiting); });
    while (KelRBTree::Node* node = state.toBeAssociations.lastNode()) {
        auto* waiting = static_cast<KelAssociation*>(const_cast<void*>(KelRBTree::element(node)));
        state.toBeAssociations.removeNode(node);
        deleteWaiting(*waiting);
    }
}

/// Frees the quids and resets the view numbers of the model; false when there is no memory to traverse it.
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
    // First: the indexes refer to the quids that the traversal frees.
    clearIndexes();
    const bool isReset = resetModel();
    freeNotes();
    emptyWaiting();
    state.packages.empty();
    deleteUnattached();
    if (std::FILE* file = std::exchange(state.theFile, nullptr); file != nullptr) {
        std::fclose(file);
    }
    if (!isReset) {
        state.aModel->recursiveDelete(); // deleting an object frees its quid
        throw std::bad_alloc();
    }
}

} // namespace rose
