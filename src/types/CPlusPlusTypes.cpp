#include "types/CPlusPlusTypes.h"

#include "builder/Trace.h"
#include "builder/Unattached.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelBaseType.h"
#include "host/model/KelDerivedType.h"
#include "host/model/KelModel.h"
#include "host/model/KelTypeValue.h"
#include "host/text/KelTextHash.h"
#include "host/types/buildTypePhysicalName.h"
#include "types/setRoseTypes.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>
#include <tsl/robin_set.h>

namespace rose {

namespace {

/// A C++ spelling and its meaning. A spelling is looked up by the first row whose key it begins with, so a row after a
/// shorter key that it begins with is never reached.
struct RoseTypeRow {
    std::string_view key;
    const char* value;
};

/// From a C++ spelling to the name of its logical base type.
constexpr auto RosePhysicalToLogical = std::to_array<RoseTypeRow>({
    {"int", "int"},           {"signed", "int"},      {"long double", "number"}, {"boolean", "SQL_BOOLEAN"},
    {"unsigned int", "int"},  {"signed int", "int"},  {"char", "char"},          {"signed char", "char"},
    {"unsigned char", "int"}, {"short", "int"},       {"signed short", "int"},   {"unsigned short", "int"},
    {"long", "int"},          {"signed long", "int"}, {"unsigned long", "int"},  {"float", "number"},
    {"double", "number"},     {"register", "binary"}, {"void", "binary"},
});

/// From a C++ spelling to its SQL data type.
constexpr auto RosePhysicalToPhysical = std::to_array<RoseTypeRow>({
    {"int", "SQL_INTEGER"},     {"long double", "SQL_NUMERIC"},   {"signed", "SQL_INTEGER"},
    {"boolean", "SQL_BOOLEAN"}, {"unsigned int", "SQL_INTEGER"},  {"signed int", "SQL_INTEGER"},
    {"char", "SQL_CHAR"},       {"signed char", "SQL_CHAR"},      {"unsigned char", "SQL_TINYINT"},
    {"short", "SQL_SMALLINT"},  {"signed short", "SQL_SMALLINT"}, {"unsigned short", "SQL_INTEGER"},
    {"long", "SQL_INTEGER"},    {"signed long", "SQL_INTEGER"},   {"unsigned long", "SQL_INTEGER"},
    {"float", "SQL_REAL"},      {"double", "SQL_DOUBLE"},         {"register", "SQL_VARBINARY"},
    {"void", "SQL_VARBINARY"},
});

/// The value of the first row whose key is a prefix of the spelling, or null.
const char* findRoseType(std::span<const RoseTypeRow> table, std::string_view spelling) {
    const auto row = std::find_if(table.begin(), table.end(),
                                  [spelling](const RoseTypeRow& at) { return spelling.starts_with(at.key); });
    return row != table.end() ? row->value : nullptr;
}

bool isLogicalName(std::string_view name) {
    return std::any_of(RosePhysicalToLogical.begin(), RosePhysicalToLogical.end(),
                       [name](const RoseTypeRow& at) { return at.value == name; });
}

constexpr const char* referenceDataType = "SQL_BINARY"; // with which a type for references is looked up

/// The number directly after the first "[", or 0.
int arrayLength(std::string_view text) {
    const std::size_t bracket = text.find('[');
    if (bracket == std::string_view::npos || bracket + 1 == text.size() ||
        std::isdigit(static_cast<unsigned char>(text[bracket + 1])) == 0) {
        return 0;
    }
    return static_cast<int>(std::strtol(text.data() + bracket + 1, nullptr, 10));
}

} // namespace

CPlusPlusSpelling readSpelling(const KelString& text) {
    const std::string_view spelling = text.view();
    const char* logicalName = findRoseType(RosePhysicalToLogical, spelling);
    const char* sqlType = findRoseType(RosePhysicalToPhysical, spelling.starts_with("char") ? "char" : spelling);
    CPlusPlusSpelling read{text, logicalName != nullptr ? KelString(logicalName) : text,
                           sqlType != nullptr ? sqlType : "undefined", 0};
    if (spelling.find_first_of("*[") != std::string_view::npos) {
        if (read.sqlType == "SQL_CHAR") {
            read.sqlType = "SQL_BINARY";
        }
        read.length = arrayLength(spelling);
    }
    return read;
}

namespace ConvertedTypes {

namespace {

struct Key {
    std::string_view name;
    std::string_view dataType;
    int length;

    bool operator==(const Key&) const = default;
};

Key keyOf(const Key& key) {
    return key;
}

Key keyOf(const KelDerivedType* type) {
    return {type->getName().view(), type->getDataType().view(), type->getLength()};
}

struct KeyHash {
    std::size_t operator()(const auto& keyed) const noexcept {
        const Key key = keyOf(keyed);
        return KelTextHash()(key.name) + static_cast<std::size_t>(key.length); // most names have one data type
    }
};

struct EqualKeys {
    using is_transparent = void;
    bool operator()(const auto& left, const auto& right) const { return keyOf(left) == keyOf(right); }
};

constexpr bool storesHash = true; // types of other keys would otherwise be read
// The types themselves: with keys of their own, it would be larger than all else that an import of many types holds.
tsl::robin_set<KelDerivedType*, KeyHash, EqualKeys, std::allocator<KelDerivedType*>, storesHash> types;

} // namespace

Scope::~Scope() {
    decltype(types)().swap(types); // clear() would keep the memory
}

void note(KelDerivedType& made) {
    const bool mayBeShared = isLogicalName(made.getName().view()) || made.getDataType() == referenceDataType;
    if (mayBeShared) {
        types.insert(&made);
    }
}

KelDerivedType* find(const KelString& dataType, const KelString& name, int length) {
    const auto found = types.find(Key{name.view(), dataType.view(), length});
    return found != types.end() ? *found : nullptr;
}

} // namespace ConvertedTypes

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

/// Sets the fields that depend on the others. PRECONDITION: none of those changes afterwards.
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
    if (KelDerivedType* found = ConvertedTypes::find(referenceDataType, spelling.logicalName, spelling.length);
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
        const bool toReference = attribute->containment == byReference && !(spelling.sqlType == referenceDataType);
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
    const CPlusPlusSpelling spelling = readSpelling(declared->getName());
    KelDerivedType* result = findOrMakeResult(*conversion, spelling, *declared);
    moveTypeValues(*declared, *result);
    moveAttributes(*conversion, spelling, *declared, *result);
    return result;
}

} // namespace rose
