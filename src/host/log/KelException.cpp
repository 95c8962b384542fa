#include "host/log/KelException.h"

KelException::KelException(const KelString& message) : message_(std::make_shared<const KelString>(message)) {}

KelException::~KelException() = default;

const char* KelException::what() const noexcept {
    return message_->text();
}
