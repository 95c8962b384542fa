#include "types/convertCPLUSPLUStype.h"

#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelModel.h"
#include "host/model/KelTypeValue.h"
#include "host/types/buildTypePhysicalName.h"
#include "types/BaseTypes.h"
#include "types/CPlusPlusSpelling.h"
#include "types/ConvertedTypes.h"
#include "types/moveAttributes.h"

#include <memory>

namespace rose {

namespace {

constexpr int byReference = 1; // an attribute's containment

/// A new type in the conversion model, derived from the base.
KelDerivedType* makeType(KelModel& conversion, const KelString& name, const KelString& dataType, KelBaseType* base) {
    auto made = std::make_unique<KelDerivedType>();
    made->setName(name);
    made->dataType = dataType;
    made->userDefined = true;
    conversion.addType(made.get());
    KelDerivedType* type = made.release();
    type->addDerivedFromConcreteType(base);
    trace::repaired(*type, KelImportReason::typeConverted, base);
    return type;
}

/// Sets what follows from a type's other fields; none of them changes afterwards.
KelDerivedType* finish(KelDerivedType* type, int length) {
    type->length = length;
    type->physicalName = buildTypePhysicalName(type);
    ConvertedTypes::note(*type);
    return type;
}

/// The type for an enumeration, typed by its literals: quoted ones are texts, others numbers.
KelDerivedType* makeEnumeration(KelModel& conversion, const CPlusPlusSpelling& spelling,
                                const KelDerivedType& declared) {
    const bool isQuoted = declared.getTypeValue(0)->getValue().view().find('"') != std::string_view::npos;
    KelBaseType* base = isQuoted ? charBase : intBase;
    return finish(makeType(conversion, spelling.text, base->getDataType(), base), spelling.length);
}

/// The type for a spelling that no table knows takes the data type of its base.
KelDerivedType* makePlain(KelModel& conversion, const CPlusPlusSpelling& spelling) {
    KelBaseType* base = getBaseType(spelling.sqlType.text());
    const bool isKnown = !(spelling.sqlType == "undefined");
    const KelString& dataType = isKnown ? spelling.sqlType : base->getDataType();
    return finish(makeType(conversion, spelling.text, dataType, base), spelling.length);
}

KelDerivedType* findResult(const CPlusPlusSpelling& spelling) {
    const bool mayReuse = spelling.text.view().starts_with(spelling.logicalName.view());
    return mayReuse ? ConvertedTypes::find(spelling.sqlType, spelling.text, spelling.length) : nullptr;
}

KelDerivedType* findOrMakeResult(KelModel& conversion, const CPlusPlusSpelling& spelling,
                                 const KelDerivedType& declared) {
    if (declared.getTypeValueCount() > 0) {
        return makeEnumeration(conversion, spelling, declared);
    }
    KelDerivedType* found = findResult(spelling);
    return found != nullptr ? found : makePlain(conversion, spelling);
}

void moveTypeValues(KelDerivedType& from, KelDerivedType& to) {
    while (KelTypeValue* value = from.getTypeValue(0)) {
        from.removeTypeValue(value);
        attach(std::unique_ptr<KelTypeValue>(value), [&](KelTypeValue* moved) { return to.addTypeValue(moved); });
    }
}

/// The type for attributes that are held by reference, named after the logical name. It ends with the data type of
/// its base, so it is found again only when that is binary.
KelDerivedType* findOrMakeReference(KelModel& conversion, const CPlusPlusSpelling& spelling) {
    if (KelDerivedType* found = ConvertedTypes::find("SQL_BINARY", spelling.logicalName, spelling.length);
        found != nullptr) {
        return found;
    }
    KelBaseType* base = getBaseType(spelling.sqlType.text());
    return finish(makeType(conversion, spelling.logicalName, base->getDataType(), base), 0);
}

void moveAttributes(KelModel& conversion, const CPlusPlusSpelling& spelling, KelDerivedType& from, KelDerivedType& to) {
    while (!from.features().isEmpty()) {
        KelAttribute* attribute = takeFirstAttribute(from);
        if (attribute == nullptr) {
            continue;
        }
        const bool toReference = attribute->containment == byReference && !(spelling.sqlType == "SQL_BINARY");
        if (!toReference) {
            to.addFeature(attribute);
            continue;
        }
        KelDerivedType* type = findOrMakeReference(conversion, spelling);
        type->addFeature(attribute);
        trace::repaired(*attribute, KelImportReason::typeByReference, type);
    }
}

} // namespace

KelConcreteType* convertCPLUSPLUStype(KelModel* conversion, KelDerivedType* declared) {
    conversion->addType(declared);
    const CPlusPlusSpelling spelling = readSpelling(declared->getName());
    KelDerivedType* result = findOrMakeResult(*conversion, spelling, *declared);
    moveTypeValues(*declared, *result);
    moveAttributes(*conversion, spelling, *declared, *result);
    return result;
}

} // namespace rose
