#pragma once

#include "diff/Model.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace diff {

/// The importance of a change for those who use the model, or what is made from it.
enum class Weight : std::uint8_t { breaking, compatible, information };

/// "breaking", "compatible" or "information".
[[nodiscard]] std::string_view weightWord(Weight weight);

/// A way in which models can differ: a row of the table that the help, the documentation and the tests go through.
struct Rule {
    std::string_view name;
    Weight weight;
    std::string_view mirror; ///< the rule when the models are exchanged; mostly itself
    std::string_view text;   ///< half a sentence for people
};

/// An index into the table.
using RuleId = std::uint16_t;

[[nodiscard]] std::span<const Rule> rules();
[[nodiscard]] inline const Rule& ruleOf(RuleId id) {
    return rules()[id];
}
/// Nothing for a name that no rule has.
[[nodiscard]] std::optional<RuleId> findRule(std::string_view name);
/// The same of a rule that must be in the table.
[[nodiscard]] RuleId ruleNamed(std::string_view name);

/// What can happen to an element of any kind, each with a rule for each kind but the model.
enum class Verb : std::uint8_t { added, removed, renamed, moved };
[[nodiscard]] RuleId ruleFor(Kind kind, Verb verb);

/// The way in which the values of a field are compared.
enum class Comparison : std::uint8_t { plain, multiplicity, visibility, navigability, size };

/// The rule for a field: its name or, if the comparison finds a direction, the part before "-narrowed", "-widened",
/// "-changed" or "-respelled".
struct FieldRule {
    FieldId field;
    std::string_view rule;
    Comparison comparison = Comparison::plain;
};
/// Null for fields that say nothing of an element by themselves: its position among others, and those of records.
[[nodiscard]] const FieldRule* fieldRule(FieldId field);

} // namespace diff
