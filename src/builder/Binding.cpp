#include "builder/Binding.h"

#include "builder/Attributes.h"
#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "builder/Diagrams.h"
#include "builder/Notes.h"
#include "builder/Relationships.h"
#include "builder/Trace.h"
#include "builder/indexes/ContainerIndex.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "literals/QEV_RRSE.h"

#include <cstdlib>
#include <cstring>
#include <vector>

namespace rose {

namespace {

enum class Found { byName, byCreation, byViewNumber };

struct Supplier {
    KelClass* boundClass = nullptr; // null: nothing to bind
    Found found = Found::byName;
};

int numberIn(const char* text) {
    return static_cast<int>(std::strtol(text, nullptr, 10));
}

KelClass* findByName(const char* name) {
    return state.aDiagram != nullptr ? getClassFromViewelement(state.aDiagram, KelString(name)) : findAClass(name, 0);
}

KelClass* findByViewNumber(int viewNumber) {
    return (state.aDiagram != nullptr ? indexOf(*state.aDiagram) : indexOf(*state.aPackage)).firstClass(viewNumber);
}

/// The class that the text names or whose view it refers to. Overwrites the final tab of a view reference.
Supplier findSupplier(char* text) {
    if (KelClass* named = findByName(text); named != nullptr) {
        return {named, Found::byName};
    }
    const std::size_t length = std::strlen(text);
    if (length > 0 && text[length - 1] == '\t') {
        text[length - 1] = '\0';
        return {findByViewNumber(numberIn(text)), Found::byViewNumber};
    }
    return {createWaitingClass(text), Found::byCreation};
}

/// Moves the attributes that wait in the key into the class. If the class has one of the same name, that one replaces
/// the waiting one in the key.
void moveAttributes(KelForeignKey& key, KelClass& owner) {
    std::vector<KelAttribute*> waiting;
    for (KelAttribute* attribute : key.attributes()) {
        waiting.push_back(attribute);
    }
    // From the last to the first. Visiting one that has been moved or added again would change nothing.
    for (auto attribute = waiting.rbegin(); attribute != waiting.rend(); ++attribute) {
        key.addAttribute(placeAttribute(**attribute, owner));
    }
}

void bindRole(KelClass& bound) {
    if (state.aDiagram != nullptr || state.aAssociationRole == nullptr) {
        trace::refused(KelImportReason::noAssociation);
        return;
    }
    state.aAssociationRole->addAssociatedClass(&bound);
    trace::changed(*state.aAssociationRole, &bound);
    if (state.forKey != nullptr) {
        state.aAssociationRole->addForeignKey(state.forKey);
        state.forKey->addAssociatedClass(&bound);
        moveAttributes(*state.forKey, bound);
        state.candKey = nullptr;
        state.forKey = nullptr;
    }
}

void bindCurrentRelationship(KelClass& bound) {
    if (state.aGeneral != nullptr) {
        bindSupertype(*state.aGeneral, bound);
    } else if (state.aRealization != nullptr) {
        bindSpecification(*state.aRealization, bound);
    } else if (state.aDependency != nullptr) {
        bindSupplier(*state.aDependency, bound);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

void bindRelationshipOfKind(KelElementType kind, KelClass& bound) {
    if (kind == KelElementType::generalization && state.aGeneral != nullptr) {
        bindSupertype(*state.aGeneral, bound);
    } else if (kind == KelElementType::realization && state.aRealization != nullptr) {
        bindSpecification(*state.aRealization, bound);
    } else if (kind == KelElementType::dependency && state.aDependency != nullptr) {
        bindSupplier(*state.aDependency, bound);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

/// A view whose ends are both given by number: draws the first generalization between their classes, or attaches a
/// note when the client is not a class of the diagram.
void bindView(KelClass& supplier, char* viewNumber) {
    if (state.aDiagram == nullptr) {
        QEV_RRSE::ROS_I_DIAGRAM_NOT_CREATED.throwException();
    }
    const KelClass* clientClass = indexOf(*state.aDiagram).firstClass(state.client);
    if (clientClass == nullptr) {
        addANote(viewNumber);
        return;
    }
    if (KelGeneralization* found = generalizationIndex().first(*clientClass, supplier); found != nullptr) {
        state.aGeneral = found;
        showOnDiagram(*state.aGeneral);
    } else {
        trace::refused(KelImportReason::nothingToShow);
    }
}

} // namespace

void CreateBinding(char* text) {
    if (state.InAssociationRoleView) {
        return;
    }
    state.InQualifier = false;
    if (state.attachNote) {
        addANote(text);
    } else if (state.InGeneralizationView) {
        addGeneralizationToDiagram(numberIn(text));
    } else if (state.InRealizationView) {
        addRealizationToDiagram(numberIn(text));
    } else if (state.InUsesView) {
        addDependencyToDiagram(numberIn(text));
    } else if (text != nullptr && state.activeObject != nullptr) {
        const KelElementType kind = state.activeObject->elementType;
        char* name = stripDoubleColon(text);
        const Supplier supplier = findSupplier(name);
        if (supplier.boundClass == nullptr) {
            trace::refused(KelImportReason::endNotDrawn);
            return;
        }
        if (kind == KelElementType::associationRole) {
            bindRole(*supplier.boundClass);
        } else if (supplier.found == Found::byName) {
            bindCurrentRelationship(*supplier.boundClass);
        } else if (supplier.found == Found::byCreation) {
            bindRelationshipOfKind(kind, *supplier.boundClass);
        } else {
            bindView(*supplier.boundClass, name);
        }
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

} // namespace rose
