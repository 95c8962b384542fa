#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <exception>
#include <memory>

/// A failure that ends an import; its message is "[code] text", for users. Every such failure reaches the host as one.
///
/// Copies share the message, so copying does not throw. Making one from a text may throw `std::bad_alloc`.
class KEL_API KelException : public std::exception {
public:
    explicit KelException(const KelString& message);
    KelException(const KelException&) noexcept = default;
    KelException& operator=(const KelException&) noexcept = default;
    ~KelException() override;

    /// The message. It lives as long as any copy of the exception.
    [[nodiscard]] const KelString& getMessage() const noexcept { return *message_; }
    /// The same message as a C string. It lives as long as any copy of the exception.
    [[nodiscard]] const char* what() const noexcept override;

private:
    std::shared_ptr<const KelString> message_;
};
