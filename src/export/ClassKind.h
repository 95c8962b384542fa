#pragma once

#include "export/options.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class KelClass;

namespace exporter {

/// The kind of a class in other languages than that of the model. Its stereotype decides, as models say almost nothing
/// in the category: of real classes a third is a data type or an enumeration, and nearly all have the category "class".
enum class ClassKind : std::uint8_t {
    classObject,
    interface,
    enumeration,
    datatype,
    primitive,
    actor,
    boundary,
    control,
    type,
};

/// The word of a kind: "class", "interface", ...
[[nodiscard]] std::string_view classKindWord(ClassKind kind);

/// Tells the kinds of classes. Reading it from several threads is safe.
class ClassKinds {
public:
    /// The option of a format that adds stereotypes; its settings are given to the constructor.
    static constexpr Option option{"stereotype.WORD",
                                   "interface|enumeration|datatype|primitive|actor|class",
                                   "",
                                   "a class whose stereotype is WORD, case ignored, is of this kind",
                                   Accepts::word,
                                   true};

    /// `added` are further stereotypes, each with the word of a kind; the last one of a stereotype counts.
    explicit ClassKinds(const std::vector<std::pair<std::string, std::string>>& added = {});

    /// By the stereotype, whatever the category; else by the category; else a class. Takes time proportional to the
    /// number of known stereotypes.
    [[nodiscard]] ClassKind kindOf(const KelClass& one) const;
    /// Whether the stereotype of the class names its kind, so that it says nothing else.
    [[nodiscard]] bool isNamedByStereotype(const KelClass& one) const;

private:
    [[nodiscard]] const std::pair<std::string, ClassKind>* find(const KelClass& one) const;

    std::vector<std::pair<std::string, ClassKind>> stereotypes_; // in lower case
};

/// `text` without blanks at its ends and with small ASCII letters: stereotypes that are equal then are the same.
[[nodiscard]] std::string foldedStereotype(std::string_view text);

} // namespace exporter
