#include "types/RoseTypeTables.h"

namespace rose {

// The order counts: a row below a shorter key that it begins with is never reached.

const std::array<RoseTypeRow, 20> RosePhysicalToLogical{{
    {"int", "int"},           {"signed", "int"},      {"long double", "number"}, {"boolean", "SQL_BOOLEAN"},
    {"unsigned int", "int"},  {"signed int", "int"},  {"char", "char"},          {"signed char", "char"},
    {"unsigned char", "int"}, {"short", "int"},       {"signed short", "int"},   {"unsigned short", "int"},
    {"long", "int"},          {"signed long", "int"}, {"unsigned long", "int"},  {"float", "number"},
    {"double", "number"},     {"register", "binary"}, {"void", "binary"},        {nullptr, nullptr},
}};

const std::array<RoseTypeRow, 20> RosePhysicalToPhysical{{
    {"int", "SQL_INTEGER"},     {"long double", "SQL_NUMERIC"},   {"signed", "SQL_INTEGER"},
    {"boolean", "SQL_BOOLEAN"}, {"unsigned int", "SQL_INTEGER"},  {"signed int", "SQL_INTEGER"},
    {"char", "SQL_CHAR"},       {"signed char", "SQL_CHAR"},      {"unsigned char", "SQL_TINYINT"},
    {"short", "SQL_SMALLINT"},  {"signed short", "SQL_SMALLINT"}, {"unsigned short", "SQL_INTEGER"},
    {"long", "SQL_INTEGER"},    {"signed long", "SQL_INTEGER"},   {"unsigned long", "SQL_INTEGER"},
    {"float", "SQL_REAL"},      {"double", "SQL_DOUBLE"},         {"register", "SQL_VARBINARY"},
    {"void", "SQL_VARBINARY"},  {"undefined", "undefined"},
}};

const char* findRoseType(const std::array<RoseTypeRow, 20>& table, std::string_view spelling) {
    for (const RoseTypeRow& row : table) {
        if (row.key == nullptr || std::string_view(row.key) == "undefined") {
            break;
        }
        if (spelling.starts_with(row.key[0]) && spelling.starts_with(row.key)) {
            return row.value;
        }
    }
    return nullptr;
}

} // namespace rose
