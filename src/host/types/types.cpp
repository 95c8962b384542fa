// The tables between base types and SQL data types, and the physical names of derived types.
#include "host/model/KelBaseType.h"
#include "host/model/KelDerivedType.h"
#include "host/types/buildTypePhysicalName.h"
#include "host/types/createBaseType.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <string>

namespace {

struct TypeNameRow {
    std::string_view key;
    const char* value;
};

constexpr const char* undefinedName = "undefined";

constexpr std::array<TypeNameRow, 8> baseTypeDataTypes{{
    {"char", "SQL_CHAR"},
    {"int", "SQL_INTEGER"},
    {"number", "SQL_NUMERIC"},
    {"binary", "SQL_BINARY"},
    {"boolean", "SQL_BOOLEAN"},
    {"date", "SQL_DATE"},
    {"time", "SQL_TIME"},
    {"datetime", "SQL_TIMESTAMP"},
}};

constexpr std::array<TypeNameRow, 23> dataTypeLogicalNames{{
    {"SQL_CHAR", "char"},       {"SQL_VARCHAR", "char"},       {"SQL_LONGVARCHAR", "char"},
    {"SQL_WCHAR", "char"},      {"SQL_WVARCHAR", "char"},      {"SQL_WLONGVARCHAR", "char"},
    {"SQL_INTEGER", "int"},     {"SQL_SMALLINT", "int"},       {"SQL_TINYINT", "int"},
    {"SQL_BIGINT", "int"},      {"SQL_NUMERIC", "number"},     {"SQL_DECIMAL", "number"},
    {"SQL_FLOAT", "number"},    {"SQL_REAL", "number"},        {"SQL_DOUBLE", "number"},
    {"SQL_BINARY", "binary"},   {"SQL_VARBINARY", "binary"},   {"SQL_LONGVARBINARY", "binary"},
    {"SQL_BOOLEAN", "boolean"}, {"SQL_BIT", "boolean"},        {"SQL_DATE", "date"},
    {"SQL_TIME", "time"},       {"SQL_TIMESTAMP", "datetime"},
}};

const char* find(std::span<const TypeNameRow> rows, std::string_view key) {
    const auto row = std::find_if(rows.begin(), rows.end(), [key](const TypeNameRow& at) { return at.key == key; });
    return row != rows.end() ? row->value : undefinedName;
}

} // namespace

KelBaseType* createBaseType(const KelString& name) {
    auto made = std::make_unique<KelBaseType>();
    made->setName(name);
    made->dataType = find(baseTypeDataTypes, name.view());
    return made.release();
}

const char* getDefaultLogicalName(const KelString& dataType) {
    return find(dataTypeLogicalNames, dataType.view());
}

KelString buildTypePhysicalName(KelDerivedType* type) {
    constexpr std::string_view prefix = "SQL_";
    std::string_view dataType = type->getDataType().view();
    if (dataType == "undefined") {
        return type->getName();
    }
    if (dataType.starts_with(prefix)) {
        dataType.remove_prefix(prefix.size());
    }
    KelString name(dataType);
    if (type->getScale() > 0) {
        name.append("(" + std::to_string(type->getLength()) + "," + std::to_string(type->getScale()) + ")");
    } else if (type->getLength() > 0 && type->getScale() == 0) {
        name.append("(" + std::to_string(type->getLength()) + ")");
    }
    return name;
}
