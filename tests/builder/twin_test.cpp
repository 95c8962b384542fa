// The builder's lookups by view number, name, quid and the two ends of a relationship, compared with linear searches of
// the collections of the repository.

#include "host/model/KelAssociation.h"
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

KelLinks<KelGeneralization> ofClient(const KelClass& ofClass, const KelGeneralization*) {
    return ofClass.generalizationsAsSubtype();
}
KelLinks<KelRealization> ofClient(const KelClass& ofClass, const KelRealization*) {
    return ofClass.realizationsAsRealization();
}
KelLinks<KelDependency> ofClient(const KelClass& ofClass, const KelDependency*) {
    return ofClass.dependenciesAsClient();
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

bool hasQuid(const KelAssociation& association, const KelString& quid) {
    const auto* own = static_cast<const KelString*>(association.generalPointer);
    return own != nullptr && *own == quid;
}

KelAssociation* walkPlaceholders(const KelString& quid) {
    for (int index = 0; index < state.toBeAssociations.getCount(); ++index) {
        auto* association = static_cast<KelAssociation*>(const_cast<void*>(state.toBeAssociations[index]));
        if (hasQuid(*association, quid)) {
            return association;
        }
    }
    return nullptr;
}

/// Few names, numbers and quids, so that they collide.
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

    /// As a supplier line would: a current relationship gets one.
    void bind() {
        KelClass* supplier = anyClass();
        const int kind = below(3);
        if (supplier == nullptr) {
            return;
        }
        if (kind == 0 && state.aGeneral != nullptr) {
            bindSupertype(*state.aGeneral, *supplier);
        } else if (kind == 1 && state.aRealization != nullptr) {
            bindSpecification(*state.aRealization, *supplier);
        } else if (kind == 2 && state.aDependency != nullptr) {
            bindSupplier(*state.aDependency, *supplier);
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

    KelAssociation* walkPackages(const KelString& quid) {
        for (const KelDesignPackage* package : designPackages) {
            for (KelModelElement* element : package->modelElements()) {
                if (element->elementType == KelElementType::association &&
                    hasQuid(static_cast<KelAssociation&>(*element), quid)) {
                    return static_cast<KelAssociation*>(element);
                }
            }
        }
        return nullptr;
    }

    void connectAssociation(KelString quid) {
        const bool isAwaited = state.InAssociationView;
        KelAssociation* expected = walkPlaceholders(quid);
        expected = expected != nullptr ? expected : walkPackages(quid);
        expected = expected != nullptr || !isAwaited ? expected : state.aAssociation;
        ConnectAssociationToDiagram(std::string(quid.view()).data());
        if (isAwaited) {
            EXPECT_EQ(state.aAssociation, expected);
            EXPECT_TRUE(state.aAssociation == nullptr || state.aDiagram->modelElements().holds(*state.aAssociation));
        }
    }

    void stepOfAssociations() {
        const KelString quid(std::to_string(below(6)).c_str());
        std::string text(quid.view());
        switch (below(5)) {
        case 0:
            state.aPackage = anyOf(designPackages);
            CreateAssociation(text.data());
            break;
        case 1:
            SetQuid(text.data());
            break;
        case 2:
            CreateAssociationInView(text.data());
            break;
        case 3:
            connectAssociation(quid);
            break;
        default:
            if (below(8) == 0) {
                delete walkPackages(quid);
            }
        }
        EXPECT_EQ(QuidRegistry::findPlaceholder(quid), walkPlaceholders(quid));
        EXPECT_EQ(QuidRegistry::findInPackages(quid), walkPackages(quid));
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

TEST(Twin, LookupsFindWhatALinearSearchFinds) {
    for (unsigned int seed = 1; seed <= 40 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomImport building(seed);
        state.aDiagram = building.diagrams.front();
        state.aPackage = building.designPackages.front();
        for (int step = 0; step < 1500 && !HasFailure(); ++step) {
            building.step();
            building.stepOfAssociations();
        }
    }
}

template <class Relationship>
void showWhereADeletedOneWas(void (*create)(), void (*bind)(Relationship&, KelClass&), void (*show)(int),
                             Relationship* CurrentObjects::*current) {
    MidImport building(1);
    state.aPackage = building.designPackages.front();
    state.aDiagram = building.diagrams.front();
    char names[][2] = {"A", "B"};
    KelClass* ends[2] = {};
    for (int end = 0; end < 2; ++end) {
        CreateClass(names[end], KelClassCategoryType::classObject);
        ends[end] = state.aClass;
        draw(*state.aDiagram, *state.aClass);
        setViewNumber(*state.aClass, end + 1);
    }
    const auto relate = [&] {
        state.aClass = ends[0];
        create();
        bind(*(state.*current), *ends[1]);
        return state.*current;
    };
    const Relationship* const first = relate();
    Relationship* const second = relate();
    delete first;
    Relationship* const newest = relate(); // the allocator is likely to give it the address of the first
    state.client = 1;
    show(2);
    EXPECT_EQ(state.*current, newest);
    EXPECT_EQ(elementsOf(*state.aDiagram), (std::vector<KelModelElement*>{ends[0], ends[1], second, newest}));
}

TEST(RelationshipViews, ShowTheNewestLastEvenWhereADeletedOneWas) {
    showWhereADeletedOneWas(CreateGeneralization, bindSupertype, addGeneralizationToDiagram, &CurrentObjects::aGeneral);
    showWhereADeletedOneWas(CreateRealization, bindSpecification, addRealizationToDiagram,
                            &CurrentObjects::aRealization);
    showWhereADeletedOneWas(CreateDependency, rose::bindSupplier, addDependencyToDiagram, &CurrentObjects::aDependency);
}

TEST(ClassLookup, FindsClassesInPackagesFirstAndThenWaitingOnes) {
    MidImport building(1);
    state.aPackage = building.designPackages.front();
    char name[] = "Order";
    CreateAssociation(name);
    EXPECT_EQ(findAClass(name, 0), nullptr) << "an element of another kind";
    KelClass* const waiting = createWaitingClass(name);
    state.aPackage = building.designPackages.back();
    CreateClass(name, KelClassCategoryType::metaclass);
    EXPECT_EQ(state.aClass, waiting);
    EXPECT_EQ(state.toBeClasses.getCount(), 0);
    const KelClass* const another = createWaitingClass(name);
    EXPECT_EQ(findAClass(name, 1), waiting) << "one in a package is found first and stays there";
    EXPECT_EQ(waiting->getDesignPackage(), state.aPackage);
    delete waiting;
    EXPECT_EQ(state.aClass, nullptr);
    EXPECT_EQ(findAClass("order", 0), nullptr);
    EXPECT_EQ(findAClass(name, 0), another);
    const KelClass* const namesake = createWaitingClass(name);
    EXPECT_EQ(findAClass(name, 1), another);
    EXPECT_EQ(findAClass(name, 1), namesake);
    EXPECT_EQ(findAClass(name, 1), nullptr);
    delete another;
    delete namesake;
}

} // namespace
