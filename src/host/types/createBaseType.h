#pragma once

#include "host/KelApi.h"

class KelBaseType;
class KelString;

/// A new base type of that name, with the corresponding data type: "SQL_CHAR" for "char", "SQL_INTEGER" for "int" and
/// so on; "undefined" for any other name. The caller owns it until a model accepts it. May throw `std::bad_alloc`.
extern "C" KEL_API KelBaseType* createBaseType(const KelString& name);

/// The name of the base type for an SQL data type: "char" for "SQL_VARCHAR", "int" for "SQL_BIGINT" and so on;
/// "undefined" for any other text. The result is a constant. Does not throw.
[[nodiscard]] KEL_API const char* getDefaultLogicalName(const KelString& dataType);
