#pragma once

#include "builder/BuilderState.h"
#include "host/log/KelLog.h"
#include "literals/QEV_RRSE.h"

#include <string_view>

namespace rose {

/// Logs a message about `subject`, whose text is not even made when nobody listens to such messages.
inline void report(const QEV_RRSE::MessageInstance_String& message, std::string_view subject) {
    if (state.localLog->accepts(message.getSeverityLevel())) {
        message.log(*state.localLog, KelString(subject));
    }
}

} // namespace rose
