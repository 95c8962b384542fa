#pragma once

#include "host/KelApi.h"

class KelBaseType;
class KelString;

/// A new base type of that name, with the data type that belongs to the name: "SQL_CHAR" for "char",
/// "SQL_INTEGER" for "int" and so on; "undefined" for a name without one. The caller owns it until a model does.
extern "C" KEL_API KelBaseType* createBaseType(const KelString& name);

/// The name of the base type to which an SQL data type belongs: "char" for "SQL_VARCHAR", "int" for "SQL_BIGINT"
/// and so on; "undefined" for any other text. The text lives as long as the program.
[[nodiscard]] KEL_API const char* getDefaultLogicalName(const KelString& dataType);
