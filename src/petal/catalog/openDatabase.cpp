#include "petal/catalog/openDatabase.h"

#include "loading/part.h"

#include <algorithm>
#include <array>

namespace petal {

namespace {

/// The database that the name of a catalogue means.
const catalog::DatabasePart& databaseOf(const std::string& name) {
    const char* const part = isServer(name) ? "postgresql" : "sqlite";
    return *static_cast<const catalog::DatabasePart*>(loading::loadPart(part));
}

} // namespace

bool isServer(std::string_view name) {
    constexpr std::array schemes{"postgresql://", "postgres://"};
    if (std::ranges::any_of(schemes, [&](std::string_view scheme) { return name.starts_with(scheme); })) {
        return true;
    }
    // libpq's words, such as "host=/tmp dbname=estate"
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz_";
    const std::size_t end = name.find_first_not_of(letters);
    return end != 0 && end != std::string_view::npos && name[end] == '=';
}

std::unique_ptr<catalog::Database> openDatabase(const std::string& name, catalog::Access access) {
    const Outcome outcome = access == catalog::Access::read ? Outcome::inputNotRead : Outcome::outputFailed;
    return withDatabase(outcome, [&] { return databaseOf(name).open(name, access, loading::version); });
}

} // namespace petal
