#include "petal/jobs/isUpToDate.h"

#include "petal/Descriptor.h"
#include "petal/ledger/ledgerForms.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>

namespace petal {

namespace {

bool isNewer(const timespec& one, const timespec& other) {
    return std::tie(one.tv_sec, one.tv_nsec) > std::tie(other.tv_sec, other.tv_nsec);
}

/// The last bytes of a regular file that was written after `source` last changed; empty for any other.
std::string endOfNewer(const std::string& source, const std::string& output) {
    constexpr off_t most = 4096;
    struct stat from {};
    struct stat made {};
    if (::stat(source.c_str(), &from) != 0 || ::stat(output.c_str(), &made) != 0 || !S_ISREG(made.st_mode) ||
        !isNewer(made.st_mtim, from.st_mtim)) {
        return "";
    }
    const Descriptor file(::open(output.c_str(), O_RDONLY | O_CLOEXEC));
    std::string last(static_cast<std::size_t>(std::min(made.st_size, most)), '\0');
    const ssize_t count = ::pread(file.get(), last.data(), last.size(), made.st_size - static_cast<off_t>(last.size()));
    return count == static_cast<ssize_t>(last.size()) ? last : "";
}

bool isWholeModel(const std::string& end) {
    return end.ends_with('\n');
}

bool isWholeLedger(const std::string& end) {
    const std::size_t line = end.size() < 2 ? std::string::npos : end.rfind('\n', end.size() - 2);
    return end.ends_with('\n') && std::string_view(end).substr(line + 1).starts_with(ledgerEnd);
}

} // namespace

bool isUpToDate(const std::string& source, const ImportPaths& paths) {
    return !(paths.model.empty() && paths.ledger.empty()) &&
           (paths.model.empty() || isWholeModel(endOfNewer(source, paths.model))) &&
           (paths.ledger.empty() || isWholeLedger(endOfNewer(source, paths.ledger)));
}

} // namespace petal
