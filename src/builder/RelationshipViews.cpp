#include "builder/RelationshipViews.h"

#include "builder/BuilderState.h"
#include "builder/ClassDiagrams.h"
#include "builder/Trace.h"
#include "builder/indexes/ContainerIndex.h"
#include "builder/indexes/Containers.h"
#include "builder/indexes/Relationships.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"

namespace rose {

namespace {

/// The elements at the two ends of a view; either may be missing.
struct ViewEnds {
    KelModelElement* client;
    KelModelElement* supplier;
};

/// A walk through the diagram's elements takes each one with the client's number for the client, and each other
/// with the supplier's for the supplier, until it has both. So it stops at the first element of the number that
/// comes up later, and has taken the last element before that of the other.
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
