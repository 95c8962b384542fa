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
#include "scanner/Scanner.h"

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

void note(State& state, const std::string& name, const KelTypeTexts& texts) {
    note(state, name, static_cast<long>(texts != KelTypeTexts())); // no rule sets any
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
    for (const auto& [name, flag] : {std::pair<const char*, bool>{"InQualifier", rose::state.InQualifier},
                                     {"InGeneralizationView", rose::state.InGeneralizationView},
                                     {"InRealizationView", rose::state.InRealizationView},
                                     {"InUsesView", rose::state.InUsesView},
                                     {"InAssociationRoleView", rose::state.InAssociationRoleView},
                                     {"InAssociationView", rose::state.InAssociationView},
                                     {"InCompartment", rose::state.InCompartment},
                                     {"InNoteView", rose::state.InNoteView},
                                     {"attachNote", rose::state.attachNote},
                                     {"diagramDescription", rose::state.diagramDescription},
                                     {"objectMechanism", rose::state.objectMechanism},
                                     {"pre", rose::state.pre},
                                     {"post", rose::state.post},
                                     {"sem", rose::state.sem}}) {
        note(state, name, static_cast<long>(flag));
    }
    note(state, "useCaseViews", rose::state.InUseCaseView);
    note(state, "client", rose::state.client);
    note(state, "physicalId", rose::state.physicalId);
    note(state, "noteId", rose::state.currentNoteId.viewId);
    note(state, "notes", rose::state.toBeNotes.getCount());
    note(state, "waitingClasses", rose::state.toBeClasses.getCount());
    note(state, "waitingAssociations", rose::state.toBeAssociations.getCount());
    note(state, "types", rose::state.aModel->types().count());
    note(state, "active", rose::state.activeObject);
    noteAll(state, "package", rose::state.aPackage);
    noteAll(state, "diagram", rose::state.aDiagram);
    noteAll(state, "class", rose::state.aClass);
    noteAll(state, "attribute", rose::state.aAttribute);
    noteAll(state, "key", rose::state.candKey);
    noteAll(state, "operation", rose::state.aOperation);
    noteAll(state, "argument", rose::state.aArgument);
    noteAll(state, "type", rose::state.aBaseType);
    noteAll(state, "association", rose::state.aAssociation);
    noteAll(state, "role", rose::state.aAssociationRole);
    noteAll(state, "general", rose::state.aGeneral);
    noteAll(state, "realization", rose::state.aRealization);
    noteAll(state, "dependency", rose::state.aDependency);
    if (rose::state.aAttribute != nullptr) {
        note(state, "attribute.type", rose::state.aAttribute->getType());
        note(state, "attribute.of", rose::state.aAttribute->getParent());
    }
    if (rose::state.aArgument != nullptr) {
        note(state, "argument.type", rose::state.aArgument->getType());
        note(state, "argument.of", rose::state.aArgument->getParent());
    }
    if (rose::state.aOperation != nullptr) {
        note(state, "operation.returns", rose::state.aOperation->getReturnType());
    }
    if (rose::state.aAssociation != nullptr) {
        if (const auto* quid = static_cast<const KelString*>(rose::state.aAssociation->generalPointer);
            quid != nullptr) {
            note(state, "association.quid", *quid);
        }
        for (const KelAssociationRole* role : rose::state.aAssociation->associationRoles()) {
            note(state, std::string(role->getName().text()) + ".isAggregate", role->isAggregate);
        }
    }
    if (rose::state.aAssociationRole != nullptr) {
        note(state, "role.class", rose::state.aAssociationRole->getAssociatedClass());
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
    startBuilding(model_, log_);
}

ScannedModel::~ScannedModel() {
    cleanup();
    rose::state = BuilderState();
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
