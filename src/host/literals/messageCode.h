#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

/// The full code of a message: `prefix`, "_", the initial of the severity word, and the short code padded with zeros to
/// four digits. "QEV_RRSE", "FATAL" and "2" give "QEV_RRSE_F0002". A longer code is used as it is. May throw
/// `std::bad_alloc`.
[[nodiscard]] KEL_API KelString fullMessageCode(const KelString& prefix, const KelString& severity,
                                                const KelString& code);
