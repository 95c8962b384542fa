#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

class KelDerivedType;

/// The physical name of a derived type: its data type without "SQL_", followed by "(length)" when it has a length
/// and no scale, or by "(length,scale)" when it has a scale. For the data type "undefined" it is the type's name.
[[nodiscard]] KEL_API KelString buildTypePhysicalName(KelDerivedType* type);
