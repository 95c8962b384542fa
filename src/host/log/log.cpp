// Severities, logs and exceptions.
#include "host/log/KelException.h"
#include "host/log/KelLog.h"
#include "host/log/Severity.h"

#include <array>
#include <cstddef>

namespace {

// The word of level n is at index n - 1.
constexpr std::array severityWords = {"FATAL", "ERROR", "WARNING", "STATUS", "DEBUG"};

} // namespace

int severityLevel(const KelString& word) {
    for (std::size_t i = 0; i < severityWords.size(); ++i) {
        if (word == severityWords[i]) {
            return static_cast<int>(i) + 1;
        }
    }
    return 0;
}

const char* severityWord(int level) {
    const bool known = level >= 1 && level <= static_cast<int>(severityWords.size());
    return known ? severityWords[static_cast<std::size_t>(level) - 1] : nullptr;
}

KelLog::~KelLog() = default;

KelException::KelException(const KelString& message) : message_(std::make_shared<const KelString>(message)) {}

KelException::~KelException() = default;

const char* KelException::what() const noexcept {
    return message_->text();
}
