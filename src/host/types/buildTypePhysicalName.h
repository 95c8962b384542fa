#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

class KelDerivedType;

/// The physical name of a derived type: its data type without "SQL_", followed by "(length)" when the length is above 0
/// and the scale 0, or by "(length,scale)" when the scale is above 0. For the data type "undefined" it is the type's
/// name. Precondition: `type` is not null. May throw `std::bad_alloc`.
[[nodiscard]] KEL_API KelString buildTypePhysicalName(KelDerivedType* type);
