#pragma once

#include "export/ClassKind.h"
#include "text/escape.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class KelArgument;
class KelAssociationRole;
class KelAttribute;
class KelClass;
class KelElement;
class KelNote;
class KelOperation;
class KelString;

namespace exporter {
struct Option;
class OptionValues;
} // namespace exporter

namespace exporter::graph {

/// How a syntax writes a text of the model so that its consumer shows it and acts on nothing in it.
struct LabelRules {
    text::Escapes escapes; ///< everywhere
    /// Characters that mean something in certain company: they are plain between two letters or digits, and after a
    /// letter or digit at the end of a word unless they are `inWordsOnly`.
    std::string_view marks;
    std::string_view inWordsOnly;
    text::Escapes markEscapes;               ///< for those
    std::span<const std::string_view> words; ///< words of the syntax: their first character is escaped anywhere
    const char* letterForm;                  ///< a `printf` format for the number of such a character
};

/// Texts of the model as labels of a syntax. U+FFFD takes the place of a character that is not printable.
class Labels {
public:
    explicit Labels(const LabelRules& rules) : rules_(rules) {}

    /// The text on one line; blanks take the place of line ends and tabs.
    [[nodiscard]] std::string line(std::string_view text) const;
    /// The same; "(unnamed)" for a text of blanks.
    [[nodiscard]] std::string name(std::string_view text) const;
    /// The text line by line. Lines are broken at a blank after about 60 characters.
    [[nodiscard]] std::vector<std::string> lines(std::string_view text) const;

private:
    [[nodiscard]] std::string escaped(std::string_view text) const;
    [[nodiscard]] bool isRisky(std::string_view text, std::size_t at) const;

    const LabelRules& rules_;
};

/// A text of one of the members of a class.
struct Row {
    std::string text; ///< "+ name : type = value"; of an operation "+ name(argument : type) : type"
    bool isStatic = false;
};

/// Which members of classes are written, and the kinds of classes.
class Members {
public:
    explicit Members(const OptionValues& options);

    [[nodiscard]] const ClassKinds& getKinds() const { return kinds_; }

    [[nodiscard]] std::vector<const KelAttribute*> attributesOf(const KelClass& one) const;
    [[nodiscard]] std::vector<const KelOperation*> operationsOf(const KelClass& one) const;

private:
    [[nodiscard]] bool isShown(std::int32_t visibility) const;

    bool areAll_;
    bool arePublic_;
    bool areOperations_;
    ClassKinds kinds_;
};

/// The words for a class: its category unless the stereotype says the same, and its stereotype; not escaped.
[[nodiscard]] std::vector<std::string_view> keywordsOf(const KelClass& one);
/// "T, U : int": the template arguments; empty for none.
[[nodiscard]] std::string templateOf(const KelClass& one, const Labels& labels);
/// `isLiteral`: of an enumeration, without a sign for its visibility.
[[nodiscard]] Row rowOf(const KelAttribute& attribute, bool isLiteral, const Labels& labels);
/// `beforeType` is what the syntax puts before the type of the result.
[[nodiscard]] Row rowOf(const KelOperation& operation, std::string_view beforeType, const Labels& labels);
/// The notes that are not blank.
[[nodiscard]] std::vector<const KelNote*> notesOf(const KelElement& element);
[[nodiscard]] bool isBlank(std::string_view text);
/// "[qualifier] 0..* name" at an end of an association; `other` is the other end. Both may be null. Empty for none.
[[nodiscard]] std::string endOf(const KelAssociationRole* role, const KelAssociationRole* other, const Labels& labels);

} // namespace exporter::graph
