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
#include "host/model/KelMetaClass.h"
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

void note(State& state, const std::string& name, KelClassCategoryType value) {
    note(state, name, static_cast<long>(value));
}

void note(State& state, const std::string& name, const KelObject* object) {
    if (object != nullptr) {
        state[name] = std::to_string(static_cast<int>(object->elementType)) + ":" + object->getName().text();
    }
}

/// With its fields and, where it owns any, the number of its elements.
template <class Object>
void noteAll(State& state, const std::string& name, const Object* object) {
    note(state, name, object);
    if (object == nullptr) {
        return;
    }
    note(state, name + ".toolId", object->toolId);
    for (const KelField& field : KelMetaClass::of(object->elementType).fields()) {
        std::visit([&](auto member) { note(state, name + "." + field.name, object->*member); }, field.member);
    }
    if constexpr (requires { object->modelElements(); }) {
        note(state, name + ".elements", object->modelElements().count());
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
    note(state, "physicalId", physicalId);
    note(state, "noteId", currentNoteId.viewId);
    note(state, "notes", toBeNotes.getCount());
    note(state, "waitingClasses", toBeClasses.getCount());
    note(state, "waitingAssociations", toBeAssociations.getCount());
    note(state, "types", aModel->types().count());
    note(state, "active", activeObject);
    noteAll(state, "package", aPackage);
    noteAll(state, "diagram", aDiagram);
    noteAll(state, "class", aClass);
    noteAll(state, "attribute", aAttribute);
    noteAll(state, "key", candKey);
    noteAll(state, "operation", aOperation);
    noteAll(state, "argument", aArgument);
    noteAll(state, "type", aBaseType);
    noteAll(state, "association", aAssociation);
    noteAll(state, "role", aAssociationRole);
    noteAll(state, "general", aGeneral);
    noteAll(state, "realization", aRealization);
    noteAll(state, "dependency", aDependency);
    if (aAttribute != nullptr) {
        note(state, "attribute.type", aAttribute->getType());
        note(state, "attribute.of", aAttribute->getParent());
    }
    if (aArgument != nullptr) {
        note(state, "argument.type", aArgument->getType());
        note(state, "argument.of", aArgument->getParent());
    }
    if (aOperation != nullptr) {
        note(state, "operation.returns", aOperation->getReturnType());
    }
    if (aAssociation != nullptr) {
        if (const auto* quid = static_cast<const KelString*>(aAssociation->generalPointer); quid != nullptr) {
            note(state, "association.quid", *quid);
        }
        for (const KelAssociationRole* role : aAssociation->associationRoles()) {
            note(state, std::string(role->getName().text()) + ".isAggregate", role->isAggregate);
        }
    }
    if (aAssociationRole != nullptr) {
        note(state, "role.class", aAssociationRole->getAssociatedClass());
    }
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
    endImport();
    aModel = nullptr;
    localLog = nullptr;
}

void ScannedModel::endImport() {
    cleanup();
    aModel = &model_;
    model_.recursiveDelete();
    resetBuilderState();
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
