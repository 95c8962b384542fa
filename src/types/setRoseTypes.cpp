#include "types/setRoseTypes.h"

#include "builder/BuilderState.h"
#include "builder/Trace.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelModel.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"
#include "host/options/KelOptionList.h"
#include "host/text/KelString.h"
#include "host/types/createBaseType.h"
#include "literals/QEV_RRSE.h"
#include "types/CPlusPlusTypes.h"
#include "types/OracleTypes.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

namespace rose {

KelBaseType* undefined = nullptr;
KelBaseType* charBase = nullptr;
KelBaseType* intBase = nullptr;
KelBaseType* numberBase = nullptr;
KelBaseType* binBase = nullptr;

namespace {

struct BaseRow {
    std::string_view logicalName;
    KelBaseType** base;
};

constexpr auto bases = std::to_array<BaseRow>({
    {"undefined", &undefined},
    {"char", &charBase},
    {"int", &intBase},
    {"number", &numberBase},
});

} // namespace

KelBaseType* getBaseType(const char* sqlDataType) {
    const std::string_view logicalName = getDefaultLogicalName(sqlDataType);
    const auto* row =
        std::find_if(bases.begin(), bases.end(), [&](const BaseRow& at) { return at.logicalName == logicalName; });
    return row != bases.end() ? *row->base : binBase;
}

unsigned int AttributeIsReferenced(const KelAttribute& attribute) {
    return static_cast<unsigned int>(attribute.getAssociatedClass() != nullptr) +
           static_cast<unsigned int>(attribute.getType() != nullptr) +
           static_cast<unsigned int>(attribute.roleNameMapsAsSource().count()) +
           static_cast<unsigned int>(attribute.roleNameMapsAsDestination().count()) +
           static_cast<unsigned int>(attribute.keys().count());
}

unsigned int ArgumentIsReferenced(const KelArgument& argument) {
    return static_cast<unsigned int>(argument.getOperation() != nullptr) +
           static_cast<unsigned int>(argument.getAssociatedClass() != nullptr) +
           static_cast<unsigned int>(argument.getType() != nullptr);
}

KelAttribute* takeFirstAttribute(KelType& from) {
    auto* attribute = static_cast<KelAttribute*>(from.features().first());
    const unsigned int links = AttributeIsReferenced(*attribute);
    from.removeFeature(0);
    return links - 1 > 0 ? attribute : nullptr;
}

namespace {

using Converter = KelConcreteType* (*)(KelModel*, KelDerivedType*);

/// The converter for the target system that the user chose.
Converter chosenConverter() {
    const KelString target = state.theOptions->getValue(QEV_RRSE::BP_SUPPORTED_TYPES.getName());
    const bool isOracle = target == QEV_RRSE::BP_SUPPORTED_TYPES_ENUM_ORACLE_7_X___8.getIdentifier();
    return isOracle ? convertORACLEtype : convertCPLUSPLUStype;
}

/// A new base type in the conversion model.
KelBaseType* makeBase(KelModel& conversion, const char* name) {
    std::unique_ptr<KelBaseType> made(createBaseType(name));
    conversion.addType(made.get());
    return made.release();
}

void makeBases(KelModel& conversion) {
    undefined = makeBase(conversion, "undefined");
    charBase = makeBase(conversion, "char");
    intBase = makeBase(conversion, "int");
    numberBase = makeBase(conversion, "number");
    binBase = makeBase(conversion, "binary");
}

/// Moves the arguments that something besides the old type refers to; the others stay without a type.
void moveArguments(KelType& from, KelType& to) {
    while (KelArgument* argument = from.arguments().first()) {
        const unsigned int links = ArgumentIsReferenced(*argument);
        from.removeArgument(0);
        if (links - 1 > 0) {
            to.addArgument(argument);
        }
    }
}

void moveOperations(KelType& from, KelType& to) {
    while (KelOperation* operation = from.operations().first()) {
        from.removeOperation(0);
        to.addOperation(operation);
    }
}

/// Moves everything that refers to the declared type to the one that replaces it.
void convert(KelModel& conversion, KelDerivedType& declared, Converter converter) {
    KelType* converted = converter(&conversion, &declared);
    trace::replaced(declared, KelImportReason::typeConverted, *converted);
    moveArguments(declared, *converted);
    moveOperations(declared, *converted);
}

/// Replaces all types of the model by ones in the conversion model.
void convertTypes(KelModel& model, KelModel& conversion) {
    const ConvertedTypes::Scope results;
    makeBases(conversion);
    const Converter converter = chosenConverter();
    while (KelType* declared = model.types().first()) {
        convert(conversion, static_cast<KelDerivedType&>(*declared), converter);
        delete declared;
    }
}

} // namespace

void setRoseTypes(KelModel* model) {
    KelModel conversion;
    convertTypes(*model, conversion);
    while (KelType* converted = conversion.types().first()) {
        conversion.removeType(converted);
        std::unique_ptr<KelType> kept(converted);
        if (kept->isReferenced() && model->addType(kept.get())) {
            static_cast<void>(kept.release());
        }
    }
}

} // namespace rose
