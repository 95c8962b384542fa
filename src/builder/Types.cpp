#include "builder/Types.h"

#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelClass.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"
#include "host/model/KelTypeValue.h"

#include <memory>
#include <string_view>

namespace rose {

KelType* findType(const KelString& name) {
    return state.aModel->types().findNamed(name);
}

namespace {

/// The model's type of that name; a new derived one if there is none. The conversion after the scan replaces it.
KelType* findOrCreateType(const char* name) {
    const KelString wanted(name);
    if (KelType* found = findType(wanted); found != nullptr) {
        return found;
    }
    auto made = std::make_unique<KelDerivedType>();
    made->setName(wanted);
    return attach(std::move(made), [](KelDerivedType* type) { return state.aModel->addType(type); });
}

/// Adds one literal, such as Red or Green=2, as the type's last value.
void addLiteral(KelDerivedType& type, std::string_view literal) {
    const std::size_t equals = literal.find('=');
    const std::string_view name = literal.substr(0, equals);
    const std::string_view value = equals != std::string_view::npos ? literal.substr(equals + 1) : "";
    auto made = std::make_unique<KelTypeValue>();
    made->setValue(KelString(value.empty() ? name : value));
    made->setName(KelString(name));
    made->position = static_cast<std::int16_t>(type.getTypeValueCount());
    attach(std::move(made), [&](KelTypeValue* added) { return type.addTypeValue(added); });
}

/// Adds the literals of a text that begins after its "{".
void addLiterals(KelDerivedType& type, std::string_view text) {
    std::size_t comma = text.find(',');
    while (comma != std::string_view::npos) {
        addLiteral(type, text.substr(0, comma));
        text.remove_prefix(comma + 1);
        comma = text.find(',');
    }
    addLiteral(type, text.substr(0, text.find('}')));
}

/// The derived type of that name in the model, or a new one that is not in it yet.
KelDerivedType* typeToEnumerate(const KelString& name, std::unique_ptr<KelDerivedType>& made) {
    if (KelType* found = findType(name); found != nullptr && found->elementType == KelElementType::derivedType) {
        return static_cast<KelDerivedType*>(found);
    }
    made = std::make_unique<KelDerivedType>();
    made->setName(name);
    return made.get();
}

} // namespace

void ConnectType(char* text) {
    if (text == nullptr) {
        return;
    }
    report(QEV_RRSE::ROS_I_CONNECTING_TYPE, text);
    state.aBaseType = findOrCreateType(stripDoubleColon(text));
    if (isActive(KelElementType::attribute)) {
        state.aAttribute->addType(state.aBaseType);
        trace::changed(*state.aAttribute, state.aBaseType);
        if (state.shadowAttribute != nullptr) {
            state.shadowAttribute->addType(state.aBaseType);
            trace::changed(*state.shadowAttribute, state.aBaseType, KelImportReason::shadow);
        }
    } else if (isActive(KelElementType::argument)) {
        state.aArgument->addType(state.aBaseType);
        trace::changed(*state.aArgument, state.aBaseType);
    } else {
        trace::refused(KelImportReason::nothingActive, state.activeObject);
    }
}

void ConnectReturnType(char* text) {
    if (state.aOperation == nullptr) {
        return;
    }
    state.aBaseType = findOrCreateType(text);
    state.aOperation->addReturnType(state.aBaseType);
    trace::changed(*state.aOperation, state.aBaseType);
}

void CreateEnumType(char* text) {
    if (state.aClass == nullptr) {
        trace::refused(KelImportReason::noClass);
        return;
    }
    const std::string_view whole(text);
    const std::size_t brace = whole.find('{');
    const std::size_t comma = whole.find(',');
    if (brace == std::string_view::npos || comma == std::string_view::npos || comma < brace) {
        trace::refused(KelImportReason::literalsUnusable, state.aClass);
        return;
    }
    std::unique_ptr<KelDerivedType> made;
    KelDerivedType* type = typeToEnumerate(state.aClass->getName(), made);
    addLiterals(*type, whole.substr(brace + 1));
    if (made != nullptr) {
        attach(std::move(made), [](KelDerivedType* added) { return state.aModel->addType(added); });
    }
    trace::changed(*type);
    trace::replaced(*state.aClass, KelImportReason::becameEnumeration, *type);
    delete state.aClass;
    state.aClass = nullptr;
    state.activeObject = nullptr;
}

} // namespace rose
