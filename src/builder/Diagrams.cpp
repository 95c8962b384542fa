#include "builder/Diagrams.h"

#include "builder/Associations.h"
#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "builder/Notes.h"
#include "builder/Quids.h"
#include "builder/Relationships.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "builder/indexes/ContainerIndex.h"
#include "builder/indexes/WaitingNodes.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"

#include <memory>
#include <utility>

namespace rose {

void CreateClassDiagram(char* name) {
    state.clearRelationships();
    auto made = std::make_unique<KelClassDiagram>();
    state.aDiagram = made.get();
    report(QEV_RRSE::ROS_I_CREATING_DIAGRAM, name);
    made->setName(name);
    state.activeObject = state.aDiagram;
    attach(std::move(made), [](KelClassDiagram* diagram) { return state.aPackage->addDiagram(diagram); });
    state.InNoteView = false;
    state.aAssociation = nullptr;
}

void showOnDiagram(KelModelElement& element) {
    if (draw(*state.aDiagram, element)) {
        trace::changed(*state.aDiagram, &element);
    } else {
        trace::refused(KelImportReason::drawnAlready, &element, state.aDiagram);
    }
}

void AddToDiagram(char* name, long viewNumber) {
    const char* simpleName = stripDoubleColon(name);
    if (state.aDiagram == nullptr) {
        trace::refused(KelImportReason::noDiagram);
        return;
    }
    state.aClass = findAClass(simpleName, 0);
    if (state.aClass == nullptr) {
        state.aClass = createWaitingClass(simpleName);
    }
    setViewNumber(*state.aClass, static_cast<int>(viewNumber));
    showOnDiagram(*state.aClass);
    state.activeObject = state.aClass;
    state.InNoteView = false;
}

namespace {

/// The association of that quid: a placeholder, or else one in a package; or null.
KelAssociation* findAssociation(const KelString& quid) {
    KelAssociation* placeholder = QuidRegistry::findPlaceholder(quid);
    return placeholder != nullptr ? placeholder : QuidRegistry::findInPackages(quid);
}

/// Makes the view's association the placeholder for that quid.
void park(KelAssociation& view, const KelString& quid) {
    QuidRegistry::hang(view, quid);
    WaitingNodes::add(state.toBeAssociations, view);
}

} // namespace

void CreateAssociationInView(char* name) {
    state.InAssociationView = true;
    auto made = std::make_unique<KelAssociation>();
    if (!isUnnamed(name)) {
        made->setName(name);
    }
    state.aAssociation = made.get();
    keepUnattached(std::move(made));
    trace::made(*state.aAssociation);
    state.InNoteView = false;
    state.activeObject = state.aAssociation;
}

void ConnectAssociationToDiagram(char* quid) {
    if (state.aDiagram == nullptr || !state.InAssociationView) {
        if (state.InAssociationView) {
            trace::refused(KelImportReason::noDiagram);
        }
        return;
    }
    state.InAssociationView = false;
    KelAssociation* view = std::exchange(state.aAssociation, nullptr);
    const KelString text(quid);
    state.aAssociation = findAssociation(text);
    if (state.aAssociation == nullptr) {
        if (view == nullptr) {
            trace::refused(KelImportReason::nothingToShow);
            return;
        }
        park(*view, text);
        state.aAssociation = view;
    } else if (view != nullptr && view != state.aAssociation) {
        copyNotes(*view, *state.aAssociation);
        trace::replaced(*view, KelImportReason::placeholder, *state.aAssociation);
        delete view;
    }
    showOnDiagram(*state.aAssociation);
    setViewNumber(*state.aAssociation, state.physicalId);
    state.activeObject = state.aAssociation;
    state.physicalId = 0;
    state.InNoteView = false;
}

namespace {

/// The elements at the two ends of a view; either may be missing.
struct ViewEnds {
    KelModelElement* client;
    KelModelElement* supplier;
};

/// Equivalent to a linear search of the diagram's elements that takes each one with the client's number as the client,
/// and each other one with the supplier's number as the supplier, until it has both. It stops at the first element of
/// the number that occurs later; of the other number it has the last element before that.
ViewEnds findEnds(const ContainerIndex& elements, int clientView, int supplierView) {
    const ContainerIndex::Place client = elements.first(clientView);
    if (clientView == supplierView) {
        return {client.element, nullptr};
    }
    const ContainerIndex::Place supplier = elements.first(supplierView);
    if (client.element == nullptr || supplier.element == nullptr) {
        return {client.element, supplier.element};
    }
    return client.order < supplier.order ? ViewEnds{elements.lastBefore(clientView, supplier).element, supplier.element}
                                         : ViewEnds{client.element, elements.lastBefore(supplierView, client).element};
}

/// Draws every relationship between the two ends of the view; the last of them becomes the current one.
template <class Relationship>
void drawRelationships(RelationshipIndex<Relationship>& index, int supplierView, Relationship*& current) {
    if (state.aDiagram == nullptr) {
        trace::refused(KelImportReason::noDiagram);
        return;
    }
    const ViewEnds ends = findEnds(indexOf(*state.aDiagram), state.client, supplierView);
    if (ends.client == nullptr || ends.supplier == nullptr || ends.client->elementType != KelElementType::classObject) {
        trace::refused(KelImportReason::endNotDrawn);
        return;
    }
    bool isDrawn = false;
    const auto drawOne = [&isDrawn](Relationship& relationship) {
        showOnDiagram(relationship);
        isDrawn = true;
    };
    Relationship* last = index.drawAll(static_cast<KelClass&>(*ends.client), *ends.supplier, *state.aDiagram, drawOne);
    if (last == nullptr) {
        trace::refused(KelImportReason::nothingToShow);
        return;
    }
    current = last;
    if (!isDrawn) {
        trace::refused(KelImportReason::drawnAlready, last, state.aDiagram);
    }
}

} // namespace

void addGeneralizationToDiagram(int supplierView) {
    drawRelationships(generalizationIndex(), supplierView, state.aGeneral);
}

void addRealizationToDiagram(int supplierView) {
    drawRelationships(realizationIndex(), supplierView, state.aRealization);
}

void addDependencyToDiagram(int supplierView) {
    drawRelationships(dependencyIndex(), supplierView, state.aDependency);
}

} // namespace rose
