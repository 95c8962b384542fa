#include "bridge/failures.h"

#include "literals/QEV_RRSE.h"

#include <new>

namespace rose {

HostFailure::HostFailure(const HOCM::MessageInstance_String& message)
    : message_(&message), prepared_(message.getMessage(QEV_RRSE::DOCUMENT_ID)) {}

void HostFailure::raise() const {
    try {
        message_->throwException(QEV_RRSE::DOCUMENT_ID);
    } catch (const std::bad_alloc&) {
        throw KelException(prepared_);
    }
}

const HostFailures& failures() {
    static const HostFailures made;
    return made;
}

} // namespace rose
