#pragma once

#include "export/UniqueNames.h"
#include "export/sql/Schema.h"

#include <string>
#include <string_view>

class KelString;

namespace exporter::sql {

/// A text of the model as UTF-8, with U+FFFD for each invalid sequence.
[[nodiscard]] std::string utf8(const KelString& text);

/// How texts of a model become names.
struct NameStyle {
    bool isSnake = true;      ///< `OrderLine` is `order_line`; otherwise texts stay as they are
    std::size_t longest = 63; ///< in bytes
};

/// `text` in this style, of any length and not yet unique: in snake case "_" is put before a capital after a small
/// letter or a digit, and before the last of several capitals that a small letter follows; all letters are small; a run
/// of characters other than letters and digits is one "_".
[[nodiscard]] std::string styled(std::string_view text, const NameStyle& style);

/// The names of one name space, which all dialects share: no two are equal without regard to case, and none is that of
/// something that a system has of its own.
class NameSpace {
public:
    enum class Kind : std::uint8_t { relations, columns };

    NameSpace(Kind kind, const NameStyle& style) : kind_(kind), rules_(rulesFor(style)), names_(rules_) {}
    NameSpace(const NameSpace&) = delete;
    NameSpace& operator=(const NameSpace&) = delete;

    /// For so many names.
    void reserve(std::size_t count) { names_.reserve(count); }
    /// Frees all names.
    void clear() { names_.clear(); }
    /// A name made from a text in the style, as `UniqueNames::make` does.
    [[nodiscard]] Name make(std::string_view styledText);
    /// As `UniqueNames::hasNumbers`.
    [[nodiscard]] bool hasNumbers() const { return names_.hasNumbers(); }

private:
    [[nodiscard]] static NameRules rulesFor(const NameStyle& style);

    Kind kind_;
    NameRules rules_;
    UniqueNames names_;
};

} // namespace exporter::sql
