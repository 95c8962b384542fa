#pragma once

#include "host/text/KelTextHash.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <tsl/robin_map.h>
#include <utility>

namespace exporter {

/// The names that a format allows: data of the format, which must outlive its use.
struct NameRules {
    std::size_t longest; ///< in bytes, without quotes; at least 30
    /// Whether a name without quotes may hold the character, or begin with it. Must allow "_" anywhere, and ASCII
    /// digits after the first character.
    bool (*allows)(int character, bool isFirst);
    bool foldsCase;                             ///< names that differ in case only are the same name
    std::span<const std::string_view> reserved; ///< words that are not names, in lower case, in ascending order
    char quote;                                 ///< before and after a name of any characters; 0 without such a form
};

/// Turns texts of a model into names, different ones within one name space. The same texts in the same order give the
/// same names.
///
/// A name is the text itself where the rules allow it. Otherwise, in this order:
/// - Each character that is not allowed becomes "_", and so does each invalid sequence of UTF-8. With quotes only
///   characters that are not printable do. "_" is put before a name that must not begin as it does, and replaces an
///   empty one.
/// - Without quotes, "_" is appended to a reserved word.
/// - A name that is too long is cut between two characters; "_" and 8 hexadecimal digits of XXH64 (seed 0) over the
/// text
///   are appended.
/// - The first free one of "_2", "_3" ... is appended to a name that was made before; the sum is cut likewise.
///
/// Used by one thread. Takes memory proportional to the names, and for each name time proportional to its length and
/// the number of names that were made from texts with such endings.
class UniqueNames {
public:
    explicit UniqueNames(const NameRules& rules) : rules_(rules) { taken_.max_load_factor(mostLoad); }

    /// For so many names.
    void reserve(std::size_t count) { taken_.reserve(count); }
    /// Frees all names.
    void clear();
    /// A name that was not returned before, without quotes.
    [[nodiscard]] std::string make(std::string_view text);
    /// Whether a name has a number since the start or `clear`. If none has, the same texts in another order would give
    /// the same names.
    [[nodiscard]] bool hasNumbers() const { return hasNumbers_; }

private:
    static constexpr float mostLoad = 0.8F; // memory costs more here than a longer way in the table

    using Taken = tsl::robin_map<std::string_view, std::uint64_t, KelTextHash>;

    std::pair<Taken::iterator, bool> take(std::string_view name);

    const NameRules& rules_;
    std::pmr::monotonic_buffer_resource keys_{128}; // folded names; small, as there are as many name spaces as tables
    Taken taken_;                                   // by these; with the last number appended to each
    bool hasNumbers_ = false;
};

/// Tells as `needsQuotes` which names need quotes. For names of ASCII characters, rules are looked up in tables.
class Quoting {
public:
    explicit Quoting(const NameRules& rules);

    [[nodiscard]] bool needsQuotes(std::string_view name) const;

private:
    static constexpr std::size_t asciiCount = 128;

    const NameRules& rules_;
    std::array<bool, asciiCount> isAllowed_{};
    std::array<bool, asciiCount> isAllowedFirst_{};
    std::array<std::uint64_t, asciiCount> reserved_{}; // by the first byte: a bit for each length, of 63 and more one
};

/// Whether the name is reserved, or holds characters that are not allowed without quotes; never without such a form.
[[nodiscard]] bool needsQuotes(std::string_view name, const NameRules& rules);

/// The name as the output must write it: in quotes, with those in it doubled, if it is reserved or holds characters
/// that are not allowed without quotes; otherwise unchanged.
[[nodiscard]] std::string quotedName(std::string_view name, const NameRules& rules);

} // namespace exporter
