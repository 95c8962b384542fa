#include "bridge/unexpectedError.h"

#include "host/literals/HOCM.h"
#include "host/log/KelException.h"
#include "literals/QEV_RRSE.h"

#include <new>

namespace rose {

const KelException& preparedUnexpectedError() {
    static const KelException prepared(HOCM::BRIDGE_UNEXPECTED_ERROR.getMessage(QEV_RRSE::DOCUMENT_ID));
    return prepared;
}

void throwUnexpectedError() {
    try {
        HOCM::BRIDGE_UNEXPECTED_ERROR.throwException(QEV_RRSE::DOCUMENT_ID);
    } catch (const std::bad_alloc&) {
        throw KelException(preparedUnexpectedError());
    }
}

} // namespace rose
