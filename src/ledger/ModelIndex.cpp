#include "ledger/ModelIndex.h"

#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelModel.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"

#include <algorithm>

namespace ledger {

namespace {

constexpr std::string_view homeName = "Use Case Classes in Class Diagrams";
constexpr std::size_t noteKeyLength = 1000;

void addPair(Claims& claims, const KelClass* first, const KelClass* second, KelObject* object) {
    if (first != nullptr && second != nullptr) {
        claims.add({first, {}, second}, object);
    }
}

/// The front of a note's text, which a reader may have cut, without the CR of lines from elsewhere.
std::string keyOfNote(std::string_view text) {
    std::string key(text.substr(0, 2 * noteKeyLength));
    std::erase(key, '\r');
    key.resize(std::min(key.size(), noteKeyLength));
    return key;
}

} // namespace

ModelIndex::ModelIndex(const KelModel& model) : model_(model) {
    std::vector<const KelPackage*> open{&model};
    while (!open.empty()) { // packages may nest deeper than the stack is long
        const KelPackage* package = open.back();
        open.pop_back();
        addPackage(*package);
        const auto children = package->childPackages();
        for (int index = children.count() - 1; index >= 0; --index) {
            open.push_back(children[index]);
        }
    }
}

void ModelIndex::addPackage(const KelPackage& package) {
    for (KelPackage* child : package.childPackages()) {
        packages_.add({&package, child->getName().view()}, child);
        packagesByName_.add({nullptr, child->getName().view()}, child);
    }
    if (package.elementType != KelElementType::designPackage) {
        return;
    }
    const auto& design = static_cast<const KelDesignPackage&>(package);
    if (design.getParentPackage() == &model_ && design.getName().view() == homeName) {
        homeOfNamed_ = &design;
    }
    addElements(design);
}

void ModelIndex::addElements(const KelDesignPackage& package) {
    for (KelModelElement* element : package.modelElements()) {
        addNotes(*element);
        switch (element->elementType) {
        case KelElementType::classObject:
            addClass(static_cast<const KelClass&>(*element));
            break;
        case KelElementType::association:
            associations_.addCopy({nullptr, signatureOf(static_cast<const KelAssociation&>(*element))}, element);
            break;
        case KelElementType::generalization: {
            const auto& relation = static_cast<const KelGeneralization&>(*element);
            addPair(generalizations_, relation.subtypeClasses().first(), relation.supertypeClasses().first(), element);
            break;
        }
        case KelElementType::realization: {
            const auto& relation = static_cast<const KelRealization&>(*element);
            addPair(realizations_, relation.getRealizationClass(), relation.getSpecificationClass(), element);
            break;
        }
        case KelElementType::dependency: {
            const auto& relation = static_cast<const KelDependency&>(*element);
            addPair(dependencies_, relation.getClientClass(), relation.getSupplierClass(), element);
            break;
        }
        default:
            break;
        }
    }
    for (KelDiagram* diagram : package.diagrams()) {
        addNotes(*diagram);
        diagrams_.add({&package, diagram->getName().view()}, diagram);
        diagrams_.add({nullptr, diagram->getName().view()}, diagram);
    }
}

void ModelIndex::addClass(const KelClass& added) {
    classes_.add({nullptr, added.getName().view()}, const_cast<KelClass*>(&added));
    for (KelOperation* operation : added.operations()) {
        operations_.add({&added, operation->getName().view()}, operation);
        for (KelArgument* argument : operation->arguments()) {
            arguments_.add({operation, argument->getName().view()}, argument);
        }
    }
    for (KelArgument* argument : added.arguments()) {
        arguments_.add({&added, argument->getName().view()}, argument);
    }
}

KelClass* ModelIndex::findClass(std::string_view name) {
    return static_cast<KelClass*>(classes_.first({nullptr, name}));
}

KelPackage* ModelIndex::takePackage(const KelPackage& parent, std::string_view name) {
    return static_cast<KelPackage*>(packages_.take({&parent, name}));
}

KelPackage* ModelIndex::takePackageAnywhere(std::string_view name) {
    return static_cast<KelPackage*>(packagesByName_.take({nullptr, name}));
}

KelDiagram* ModelIndex::takeDiagram(const KelPackage* package, std::string_view name) {
    return static_cast<KelDiagram*>(diagrams_.take({package, name}));
}

KelOperation* ModelIndex::takeOperation(const KelClass& owner, std::string_view name) {
    return static_cast<KelOperation*>(operations_.take({&owner, name}));
}

KelArgument* ModelIndex::takeArgument(const KelObject& owner, std::string_view name) {
    return static_cast<KelArgument*>(arguments_.take({&owner, name}));
}

KelAssociation* ModelIndex::takeAssociation(std::string_view signature) {
    return static_cast<KelAssociation*>(associations_.take({nullptr, signature}));
}

Claims& ModelIndex::relationships(KelElementType kind) {
    return kind == KelElementType::generalization ? generalizations_
           : kind == KelElementType::realization  ? realizations_
                                                  : dependencies_;
}

KelObject* ModelIndex::takeRelationship(KelElementType kind, const KelClass& client, const KelClass& supplier) {
    return relationships(kind).take({&client, {}, &supplier});
}

KelObject* ModelIndex::findRelationship(KelElementType kind, const KelClass& client, const KelClass& supplier) {
    return relationships(kind).first({&client, {}, &supplier});
}

void ModelIndex::addNotes(const KelElement& element) {
    for (KelNote* note : element.notes()) {
        const std::string key = keyOfNote(note->description.view());
        notes_.addCopy({&element, key}, note);
        notes_.addCopy({nullptr, key}, note);
    }
}

KelNote* ModelIndex::takeNote(const KelObject* element, std::string_view text) {
    const std::string key = keyOfNote(text);
    KelObject* found = notes_.take({element, key});
    while (found != nullptr && !takenNotes_.insert(found).second) {
        found = notes_.take({element, key});
    }
    return static_cast<KelNote*>(found);
}

void ModelIndex::addToSignature(std::string& signature, std::string_view name) {
    signature += name;
    signature += '\0';
}

std::string ModelIndex::signatureOf(const KelAssociation& association) {
    std::string signature;
    addToSignature(signature, association.getName().view());
    for (const KelAssociationRole* role : association.associationRoles()) {
        addToSignature(signature, role->getName().view());
        const KelClass* associated = role->getAssociatedClass();
        addToSignature(signature, associated != nullptr ? associated->getName().view() : "");
    }
    return signature;
}

} // namespace ledger
