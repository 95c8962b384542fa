#include "ScannedModel.h"

#include "host/model/KelArgument.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelClassDiagram.h"
#include "host/model/KelDependency.h"
#include "host/model/KelDesignPackage.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelOperation.h"
#include "host/model/KelRealization.h"
#include "host/model/KelType.h"
#include "scanner/RoseLexImport.h"

#include <cstdio>
#include <memory>

namespace rose::test {

namespace {

void note(State& state, const std::string& name, long value) {
    if (value != 0) {
        state[name] = std::to_string(value);
    }
}

void note(State& state, const std::string& name, const KelString& value) {
    if (!value.isEmpty()) {
        state[name] = value.text();
    }
}

void note(State& state, const std::string& name, const KelObject* object) {
    if (object != nullptr) {
        state[name] = std::to_string(static_cast<int>(object->elementType)) + ":" + object->getName().text();
    }
}

} // namespace

State builderState() {
    State state;
    for (const auto& [name, flag] : {std::pair<const char*, bool>{"InQualifier", InQualifier},
                                     {"InGeneralizationView", InGeneralizationView},
                                     {"InRealizationView", InRealizationView},
                                     {"InUsesView", InUsesView},
                                     {"InAssociationRoleView", InAssociationRoleView},
                                     {"InAssociationView", InAssociationView},
                                     {"InCompartment", InCompartment},
                                     {"InNoteView", InNoteView},
                                     {"attachNote", attachNote},
                                     {"diagramDescription", diagramDescription},
                                     {"objectMechanism", objectMechanism},
                                     {"pre", pre},
                                     {"post", post},
                                     {"sem", sem}}) {
        note(state, name, static_cast<long>(flag));
    }
    note(state, "useCaseViews", InUseCaseView);
    note(state, "client", client);
    note(state, "notes", toBeNotes.getCount());
    note(state, "active", activeObject);
    if (activeObject != nullptr) {
        note(state, "active.toolId", activeObject->toolId);
        note(state, "active.description", activeObject->description);
    }
    note(state, "package", aPackage);
    if (aPackage != nullptr) {
        note(state, "package.toolId", aPackage->toolId);
        note(state, "package.stereotype", aPackage->stereotype);
        note(state, "package.elements", aPackage->modelElements().count());
    }
    note(state, "diagram", aDiagram);
    if (aDiagram != nullptr) {
        note(state, "diagram.description", aDiagram->description);
        note(state, "diagram.elements", aDiagram->modelElements().count());
    }
    note(state, "class", aClass);
    if (aClass != nullptr) {
        note(state, "class.isAbstract", aClass->isAbstract);
        note(state, "class.isPersistent", aClass->isPersistent);
        note(state, "class.space", aClass->space);
        note(state, "class.kind", static_cast<long>(aClass->categoryType));
        note(state, "class.stereotype", aClass->stereotype);
        note(state, "class.toolId", aClass->toolId);
    }
    note(state, "attribute", aAttribute);
    if (aAttribute != nullptr) {
        note(state, "attribute.visibility", aAttribute->visibility);
        note(state, "attribute.containment", aAttribute->containment);
        note(state, "attribute.isStatic", aAttribute->isStatic);
        note(state, "attribute.isDerived", aAttribute->isDerived);
        note(state, "attribute.initialValue", aAttribute->initialValue);
    }
    note(state, "key", candKey);
    note(state, "operation", aOperation);
    if (aOperation != nullptr) {
        note(state, "operation.visibility", aOperation->visibility);
        note(state, "operation.concurrency", aOperation->concurrency);
        note(state, "operation.isFriend", aOperation->isFriend);
        note(state, "operation.isStatic", aOperation->isStatic);
        note(state, "operation.isVirtual", aOperation->isVirtual);
        note(state, "operation.semantics", aOperation->semantics);
        note(state, "operation.precondition", aOperation->precondition);
        note(state, "operation.postcondition", aOperation->postcondition);
        note(state, "operation.returns", aOperation->getReturnType());
    }
    note(state, "argument", aArgument);
    note(state, "type", aBaseType);
    note(state, "association", aAssociation);
    if (aAssociation != nullptr) {
        note(state, "association.isAggregation", aAssociation->isAggregation);
        note(state, "association.quid", static_cast<long>(aAssociation->generalPointer != nullptr));
        for (const KelAssociationRole* role : aAssociation->associationRoles()) {
            note(state, std::string(role->getName().text()) + ".isAggregate", role->isAggregate);
        }
    }
    note(state, "role", aAssociationRole);
    if (aAssociationRole != nullptr) {
        note(state, "role.isNavigable", aAssociationRole->isNavigable);
        note(state, "role.isStatic", aAssociationRole->isStatic);
        note(state, "role.isFriend", aAssociationRole->isFriend);
        note(state, "role.containment", aAssociationRole->containment);
        note(state, "role.multiplicity", aAssociationRole->multiplicity);
        note(state, "role.class", aAssociationRole->getAssociatedClass());
    }
    note(state, "general", aGeneral);
    if (aGeneral != nullptr) {
        note(state, "general.visibility", aGeneral->visibility);
        note(state, "general.isVirtual", aGeneral->isVirtual);
        note(state, "general.isFriend", aGeneral->isFriend);
    }
    note(state, "realization", aRealization);
    note(state, "dependency", aDependency);
    return state;
}

std::string difference(const State& before, const State& after) {
    std::string text;
    for (const auto& [name, value] : after) {
        const auto earlier = before.find(name);
        if (earlier == before.end() || earlier->second != value) {
            text.append(text.empty() ? "" : " ").append(name).append("=").append(value);
        }
    }
    for (const auto& [name, value] : before) {
        if (!after.contains(name)) {
            text.append(text.empty() ? "-" : " -").append(name);
        }
    }
    return text;
}

ScannedModel::ScannedModel() {
    localLog = &log_;
    aModel = &model_;
    resetBuilderState();
}

ScannedModel::~ScannedModel() {
    cleanup();
    resetBuilderState();
    aModel = nullptr;
    localLog = nullptr;
}

void ScannedModel::scan(std::string_view text) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::tmpfile(), &std::fclose);
    std::fwrite(text.data(), 1, text.size(), stream.get());
    std::rewind(stream.get());
    RoseLexImport(stream.get());
}

std::string ScannedModel::change(std::string_view text) {
    const State before = builderState();
    scan(text);
    return difference(before, builderState());
}

} // namespace rose::test
