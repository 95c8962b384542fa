#include "builder/Binding.h"

#include "builder/BuilderState.h"
#include "builder/ClassDiagrams.h"
#include "builder/ClassLookup.h"
#include "builder/Notes.h"
#include "builder/RelationshipViews.h"
#include "builder/Trace.h"
#include "builder/indexes/ContainerIndex.h"
#include "builder/indexes/Containers.h"
#include "builder/indexes/Relationships.h"
#include "builder/placeAttribute.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"
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
    return aDiagram != nullptr ? getClassFromViewelement(aDiagram, KelString(name)) : findAClass(name, 0);
}

KelClass* findByViewNumber(int viewNumber) {
    return (aDiagram != nullptr ? indexOf(*aDiagram) : indexOf(*aPackage)).firstClass(viewNumber);
}

/// The class that the text names or whose view it refers to. A view reference loses its final tab.
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

/// Moves the attributes that wait in the key into the class. Where the class has one of the same name, that takes
/// the place of the waiting one in the key.
void moveAttributes(KelForeignKey& key, KelClass& owner) {
    std::vector<KelAttribute*> waiting;
    for (KelAttribute* attribute : key.attributes()) {
        waiting.push_back(attribute);
    }
    // From the last to the first. What has been moved or put in would stay as it is if it were visited again.
    for (auto attribute = waiting.rbegin(); attribute != waiting.rend(); ++attribute) {
        key.addAttribute(placeAttribute(**attribute, owner));
    }
}

void bindRole(KelClass& bound) {
    if (aDiagram != nullptr || aAssociationRole == nullptr) {
        trace::refused(KelImportReason::noAssociation);
        return;
    }
    aAssociationRole->addAssociatedClass(&bound);
    trace::changed(*aAssociationRole, &bound);
    if (forKey != nullptr) {
        aAssociationRole->addForeignKey(forKey);
        forKey->addAssociatedClass(&bound);
        moveAttributes(*forKey, bound);
        candKey = nullptr;
        forKey = nullptr;
    }
}

void bindCurrentRelationship(KelClass& bound) {
    if (aGeneral != nullptr) {
        bindSupertype(*aGeneral, bound);
    } else if (aRealization != nullptr) {
        bindSpecification(*aRealization, bound);
    } else if (aDependency != nullptr) {
        bindSupplier(*aDependency, bound);
    } else {
        trace::refused(KelImportReason::nothingActive, activeObject);
    }
}

void bindRelationshipOfKind(KelElementType kind, KelClass& bound) {
    if (kind == KelElementType::generalization && aGeneral != nullptr) {
        bindSupertype(*aGeneral, bound);
    } else if (kind == KelElementType::realization && aRealization != nullptr) {
        bindSpecification(*aRealization, bound);
    } else if (kind == KelElementType::dependency && aDependency != nullptr) {
        bindSupplier(*aDependency, bound);
    } else {
        trace::refused(KelImportReason::nothingActive, activeObject);
    }
}

/// A view whose ends are both given by number: draws the first generalization between their classes, or attaches a
/// note when the client is no class of the diagram.
void bindView(KelClass& supplier, char* viewNumber) {
    if (aDiagram == nullptr) {
        QEV_RRSE::ROS_I_DIAGRAM_NOT_CREATED.throwException();
    }
    const KelClass* clientClass = indexOf(*aDiagram).firstClass(client);
    if (clientClass == nullptr) {
        addANote(viewNumber);
        return;
    }
    if (KelGeneralization* found = generalizationIndex().first(*clientClass, supplier); found != nullptr) {
        aGeneral = found;
        showOnDiagram(*aGeneral);
    } else {
        trace::refused(KelImportReason::nothingToShow);
    }
}

} // namespace

void CreateBinding(char* text) {
    if (InAssociationRoleView) {
        return;
    }
    InQualifier = false;
    if (attachNote) {
        addANote(text);
    } else if (InGeneralizationView) {
        addGeneralizationToDiagram(numberIn(text));
    } else if (InRealizationView) {
        addRealizationToDiagram(numberIn(text));
    } else if (InUsesView) {
        addDependencyToDiagram(numberIn(text));
    } else if (text != nullptr && activeObject != nullptr) {
        const KelElementType kind = activeObject->elementType;
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
        trace::refused(KelImportReason::nothingActive, activeObject);
    }
}

} // namespace rose
