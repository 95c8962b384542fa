#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <exception>
#include <memory>

/// How every failure that ends an import reaches the host. Copies share one message, so copying never throws.
class KEL_API KelException : public std::exception {
public:
    explicit KelException(const KelString& message);
    KelException(const KelException&) noexcept = default;
    KelException& operator=(const KelException&) noexcept = default;
    ~KelException() override;

    [[nodiscard]] const KelString& getMessage() const noexcept { return *message_; }
    /// The same message as a C string, alive as long as any copy of the exception.
    [[nodiscard]] const char* what() const noexcept override;

private:
    std::shared_ptr<const KelString> message_;
};
