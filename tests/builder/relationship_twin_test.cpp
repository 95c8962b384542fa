// The lookups by view number, by name and by the two ends of a relationship, held against walks through the
// collections of the repository.

#include "builder/Binding.h"
#include "builder/Classes.h"
#include "builder/Diagrams.h"
#include "builder/Relationships.h"
#include "builder/indexes/ContainerIndex.h"
#include "host/model/KelClass.h"
#include "host/model/KelDependency.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelRealization.h"
#include "support/MidImport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

namespace {

using namespace rose;

std::vector<KelClass*> suppliersOf(const KelGeneralization& of) {
    std::vector<KelClass*> suppliers;
    for (KelClass* supertype : of.supertypeClasses()) {
        suppliers.push_back(supertype);
    }
    return suppliers;
}
std::vector<KelClass*> suppliersOf(const KelRealization& of) {
    return {of.getSpecificationClass()};
}
std::vector<KelClass*> suppliersOf(const KelDependency& of) {
    return {of.getSupplierClass()};
}

KelLinks<KelGeneralization> ofClient(const KelClass& client, const KelGeneralization*) {
    return client.generalizationsAsSubtype();
}
KelLinks<KelRealization> ofClient(const KelClass& client, const KelRealization*) {
    return client.realizationsAsRealization();
}
KelLinks<KelDependency> ofClient(const KelClass& client, const KelDependency*) {
    return client.dependenciesAsClient();
}

template <class Container>
std::vector<KelModelElement*> elementsOf(const Container& container) {
    std::vector<KelModelElement*> elements;
    for (KelModelElement* element : container.modelElements()) {
        elements.push_back(element);
    }
    return elements;
}

/// What is on the diagram after a view, and what is current.
template <class Relationship>
struct Outcome {
    std::vector<KelModelElement*> elements;
    Relationship* current;
    bool operator==(const Outcome&) const = default;
};

template <class Relationship>
Outcome<Relationship> walk(const KelClassDiagram& diagram, int clientView, int supplierView, Relationship* current) {
    Outcome<Relationship> outcome{elementsOf(diagram), current};
    KelModelElement* clientEnd = nullptr;
    KelModelElement* supplierEnd = nullptr;
    for (KelModelElement* element : diagram.modelElements()) {
        if (element->toolId == clientView) {
            clientEnd = element;
        } else if (element->toolId == supplierView) {
            supplierEnd = element;
        }
        if (clientEnd != nullptr && supplierEnd != nullptr) {
            break;
        }
    }
    if (clientEnd == nullptr || supplierEnd == nullptr || clientEnd->elementType != KelElementType::classObject) {
        return outcome;
    }
    for (Relationship* candidate : ofClient(static_cast<KelClass&>(*clientEnd), current)) {
        if (std::ranges::count(suppliersOf(*candidate), supplierEnd) > 0) {
            outcome.current = candidate;
            if (std::ranges::count(outcome.elements, candidate) == 0) {
                outcome.elements.push_back(candidate);
            }
        }
    }
    return outcome;
}

KelClass* walkForName(const std::vector<KelModelElement*>& elements, const KelString& name) {
    const auto found = std::ranges::find_if(elements, [&](const KelModelElement* element) {
        return element->elementType == KelElementType::classObject && element->getName() == name;
    });
    return found != elements.end() ? static_cast<KelClass*>(*found) : nullptr;
}

KelClass* walkForNumber(const std::vector<KelModelElement*>& elements, int viewNumber) {
    const auto found = std::ranges::find_if(elements, [&](const KelModelElement* element) {
        return element->elementType == KelElementType::classObject && element->toolId == viewNumber;
    });
    return found != elements.end() ? static_cast<KelClass*>(*found) : nullptr;
}

/// Few names and numbers, so that they collide.
class RandomImport : public MidImport {
public:
    using MidImport::MidImport;

    KelString anyName() { return KelString(std::array{"A", "B", "C", "D"}[static_cast<std::size_t>(below(4))]); }
    int anyNumber() { return below(5); }
    KelModelElement* anyElement() {
        std::vector<KelModelElement*> elements = elementsOf(*anyOf(designPackages));
        return elements.empty() ? nullptr : anyOf(elements);
    }
    KelClass* anyClass() {
        KelModelElement* element = anyElement();
        return element != nullptr && element->elementType == KelElementType::classObject
                   ? static_cast<KelClass*>(element)
                   : nullptr;
    }

    void addClass() {
        auto* made = new KelClass();
        made->setName(anyName());
        place(*anyOf(designPackages), *made);
    }

    void addRelationship() {
        state.aClass = anyClass();
        state.aPackage = anyOf(designPackages);
        std::array{CreateGeneralization, CreateRealization, CreateDependency}[static_cast<std::size_t>(below(3))]();
    }

    /// As a supplier line would: the relationship that is current gets one.
    void bind() {
        if (KelClass* supplier = anyClass(); supplier != nullptr) {
            if (state.aGeneral != nullptr) {
                bindSupertype(*state.aGeneral, *supplier);
            } else if (state.aRealization != nullptr) {
                bindSpecification(*state.aRealization, *supplier);
            } else if (state.aDependency != nullptr) {
                bindSupplier(*state.aDependency, *supplier);
            }
        }
    }

    template <class Relationship>
    void view(void (*show)(int), Relationship*& current) {
        state.client = anyNumber();
        const int supplierView = anyNumber();
        const auto expected = walk(*state.aDiagram, state.client, supplierView, current);
        show(supplierView);
        EXPECT_EQ((Outcome<Relationship>{elementsOf(*state.aDiagram), current}), expected);
    }

    void compareLookups() {
        const KelString name = anyName();
        const int number = anyNumber();
        KelDesignPackage* package = anyOf(designPackages);
        EXPECT_EQ(getClassFromViewelement(package, name), walkForName(elementsOf(*package), name));
        EXPECT_EQ(getClassFromViewelement(state.aDiagram, name), walkForName(elementsOf(*state.aDiagram), name));
        EXPECT_EQ(indexOf(*package).firstClass(number), walkForNumber(elementsOf(*package), number));
        EXPECT_EQ(indexOf(*state.aDiagram).firstClass(number), walkForNumber(elementsOf(*state.aDiagram), number));
    }

    void step() {
        KelModelElement* element = anyElement();
        switch (below(12)) {
        case 0:
            addClass();
            break;
        case 1:
            addRelationship();
            break;
        case 2:
        case 3:
            bind();
            break;
        case 4:
        case 5:
            if (element != nullptr) {
                draw(*state.aDiagram, *element);
                setViewNumber(*element, anyNumber());
            }
            break;
        case 6:
            view(addGeneralizationToDiagram, state.aGeneral);
            break;
        case 7:
            view(addRealizationToDiagram, state.aRealization);
            break;
        case 8:
            view(addDependencyToDiagram, state.aDependency);
            break;
        case 9:
            compareLookups();
            break;
        case 10:
            state.aDiagram = below(4) == 0 ? anyOf(diagrams) : state.aDiagram;
            break;
        default:
            if (below(6) == 0) {
                delete element;
            }
        }
    }
};

TEST(RelationshipTwin, LookupsFindWhatAWalkFinds) {
    for (unsigned int seed = 1; seed <= 40 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomImport building(seed);
        state.aDiagram = building.diagrams.front();
        for (int step = 0; step < 1500 && !HasFailure(); ++step) {
            building.step();
        }
    }
}

} // namespace
