#include "types/OracleTypes.h"

#include "builder/Trace.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelModel.h"
#include "host/types/createBaseType.h"
#include "types/setRoseTypes.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace rose {

namespace {

struct OracleRow {
    std::string_view oracleName;
    const char* dataType;
};

constexpr auto oracleTypes = std::to_array<OracleRow>({
    {"INTEGER", "SQL_INTEGER"},
    {"SMALLINT", "SQL_SMALLINT"},
    {"FLOAT", "SQL_REAL"},
    {"DECIMAL", "SQL_NUMERIC"},
    {"NUMBER", "SQL_NUMERIC"},
    {"ROWID", "SQL_VARCHAR"},
    {"CHARACTER", "SQL_CHAR"},
    {"CHAR", "SQL_CHAR"},
    {"VARCHAR", "SQL_VARCHAR"},
    {"VARCHAR2", "SQL_VARCHAR"},
    {"LONG VARCHAR", "SQL_LONGVARCHAR"},
    {"DATE", "SQL_DATE"},
    {"LONG RAW", "SQL_LONGVARBINARY"},
    {"LONG", "SQL_VARCHAR"},
    {"RAW MLSLABEL", "SQL_VARCHAR"},
    {"RAW", "SQL_BINARY"},
    {"MLSLABEL", "SQL_VARCHAR"},
});

int numberIn(const char* text) {
    return static_cast<int>(std::strtol(text, nullptr, 10));
}

/// The conversion model's base type of that name; made if the name is not there or is another kind of type's.
KelBaseType* findOrMakeBase(KelModel& conversion, const KelString& name) {
    KelType* found = conversion.types().findNamed(name);
    if (found != nullptr && found->elementType == KelElementType::baseType) {
        return static_cast<KelBaseType*>(found);
    }
    std::unique_ptr<KelBaseType> made(createBaseType(name));
    conversion.addType(made.get());
    return made.release();
}

/// A new type for the declared text, in the conversion model.
KelDerivedType* makeType(KelModel& conversion, const KelString& text) {
    auto made = std::make_unique<KelDerivedType>();
    made->setName(text);
    made->physicalName = text;
    conversion.addType(made.get());
    KelDerivedType* type = made.release();
    type->dataType = retrieveDataTypeInfo(text.text(), type->length, type->scale);
    type->userDefined = true;
    KelBaseType* base = findOrMakeBase(conversion, getDefaultLogicalName(type->dataType));
    type->addDerivedFromConcreteType(base);
    trace::repaired(*type, KelImportReason::typeConverted, base);
    return type;
}

} // namespace

const char* convertDataTypeOracleToKel(const char* oracleName) {
    const auto* row = std::find_if(oracleTypes.begin(), oracleTypes.end(),
                                   [oracleName](const OracleRow& at) { return at.oracleName == oracleName; });
    return row != oracleTypes.end() ? row->dataType : "undefined";
}

const char* retrieveDataTypeInfo(const char* text, int& length, int& scale) {
    std::string parts(text); // cut into C strings below
    const char* lengthText = "";
    const char* scaleText = "";
    for (char& character : parts) {
        if (character == '(') {
            lengthText = &character + 1;
        } else if (character == ',') {
            scaleText = &character + 1;
        } else if (character != ')') {
            continue;
        }
        character = '\0';
    }
    length = numberIn(lengthText);
    scale = numberIn(scaleText);
    return convertDataTypeOracleToKel(parts.c_str());
}

KelConcreteType* convertORACLEtype(KelModel* conversion, KelDerivedType* declared) {
    const KelString& text = declared->getName();
    auto* result = static_cast<KelConcreteType*>(conversion->types().findNamed(text));
    if (result == nullptr) {
        result = makeType(*conversion, text);
    }
    while (!declared->features().isEmpty()) {
        if (KelAttribute* attribute = takeFirstAttribute(*declared); attribute != nullptr) {
            result->addFeature(attribute);
        }
    }
    return result;
}

} // namespace rose
