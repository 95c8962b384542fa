#include "export/graph/labels.h"

#include "export/ClassKind.h"
#include "export/modelWalk.h"
#include "export/options.h"
#include "export/relationships.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAssociationRole.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelCandidateKey.h"
#include "host/model/KelClass.h"
#include "host/model/KelForeignKey.h"
#include "host/model/KelNote.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"
#include "text/ascii.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace exporter::graph {

namespace {

constexpr std::size_t width = 60; // of notes, in bytes
/// Consumers write XML, which cannot hold these: U+FFFE and U+FFFF.
constexpr std::array<std::string_view, 2> notInXml{"\xEF\xBF\xBE", "\xEF\xBF\xBF"};
constexpr int firstBeyondAscii = 0x80;

bool isWordByte(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           static_cast<unsigned char>(byte) >= firstBeyondAscii;
}

std::string formatted(const char* form, int character) {
    std::array<char, 16> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), form, static_cast<unsigned>(character));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

} // namespace

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool Labels::isRisky(std::string_view text, std::size_t at) const {
    if (rules_.marks.find(text[at]) == std::string_view::npos) {
        return false;
    }
    const bool isAfterWord = at > 0 && isWordByte(text[at - 1]);
    const bool isBeforeWord = at + 1 < text.size() && isWordByte(text[at + 1]);
    const bool isAtEnd = at + 1 == text.size() || text[at + 1] == ' ';
    const bool isInWordsOnly = rules_.inWordsOnly.find(text[at]) != std::string_view::npos;
    return !isAfterWord || !(isBeforeWord || (isAtEnd && !isInWordsOnly));
}

std::string Labels::escaped(std::string_view text) const {
    if (rules_.marks.empty() && rules_.words.empty()) {
        return text::escaped(text, rules_.escapes);
    }
    std::string result;
    std::size_t plain = 0; // what is not in the result yet
    const auto put = [&](std::size_t until) {
        result += text::escaped(text.substr(plain, until - plain), rules_.escapes);
    };
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (isRisky(text, at)) {
            put(at);
            result += text::escaped(text.substr(at, 1), rules_.markEscapes);
            plain = at + 1;
        } else if (std::ranges::any_of(rules_.words,
                                       [&](std::string_view word) { return text.substr(at).starts_with(word); })) {
            put(at);
            plain = at;
            result += formatted(rules_.letterForm, text::nextCharacter(text, plain));
            at = plain - 1;
        }
    }
    put(text.size());
    return result;
}

std::string Labels::line(std::string_view text) const {
    if (text::isPrintableAscii(text)) {
        return escaped(text);
    }
    std::string flat;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isSecond = text[at] == '\n' && at > 0 && text[at - 1] == '\r';
        if (!isSecond) {
            flat += text[at] == '\n' || text[at] == '\r' || text[at] == '\t' ? ' ' : text[at];
        }
    }
    for (const std::string_view character : notInXml) {
        for (std::size_t at = flat.find(character); at != std::string::npos; at = flat.find(character, at)) {
            flat.replace(at, character.size(), "\uFFFD");
        }
    }
    return escaped(flat);
}

std::string Labels::name(std::string_view text) const {
    return line(isBlank(text) ? "(unnamed)" : text);
}

std::vector<std::string> Labels::lines(std::string_view text) const {
    std::vector<std::string> result;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        std::string_view rest = text.substr(0, end);
        for (std::size_t at = rest.find(' ', width); at != std::string_view::npos; at = rest.find(' ', width)) {
            result.push_back(line(rest.substr(0, at)));
            rest.remove_prefix(at + 1);
        }
        result.push_back(line(rest));
        const bool isPair = text.substr(end).starts_with("\r\n");
        text.remove_prefix(std::min(end + (isPair ? 2U : 1U), text.size()));
    }
    return result;
}

Members::Members(const OptionValues& options)
    : areAll_(options.get("members") == "all"), arePublic_(options.get("members") == "public"),
      areOperations_(options.isOn("operations")), kinds_(options.family(ClassKinds::option.name)) {}

bool Members::isShown(std::int32_t visibility) const {
    return areAll_ || (arePublic_ && visibility == 0);
}

std::vector<const KelAttribute*> Members::attributesOf(const KelClass& one) const {
    std::vector<const KelAttribute*> shown;
    for (const KelAttribute* attribute : one.attributes()) {
        if (isShown(attribute->visibility)) {
            shown.push_back(attribute);
        }
    }
    std::ranges::stable_sort(shown, {}, &KelAttribute::position);
    return shown;
}

std::vector<const KelOperation*> Members::operationsOf(const KelClass& one) const {
    std::vector<const KelOperation*> shown;
    for (const KelOperation* operation : one.operations()) {
        if (areOperations_ && isShown(operation->visibility)) {
            shown.push_back(operation);
        }
    }
    return shown;
}

namespace {

struct CategoryWord {
    KelClassCategoryType category;
    std::string_view word;
};
constexpr std::array categoryWords{
    CategoryWord{KelClassCategoryType::instantiatedClass, "bind"},
    CategoryWord{KelClassCategoryType::classUtility, "utility"},
    CategoryWord{KelClassCategoryType::parameterizedClassUtility, "utility"},
    CategoryWord{KelClassCategoryType::instantiatedClassUtility, "utility"},
    CategoryWord{KelClassCategoryType::instantiatedClassUtility, "bind"},
    CategoryWord{KelClassCategoryType::metaclass, "metaclass"},
    CategoryWord{KelClassCategoryType::interface, "interface"},
};

std::string_view signOf(std::int32_t visibility) {
    constexpr std::array<std::string_view, 4> signs{"+", "#", "-", "~"};
    return visibility >= 0 && visibility < 4 ? signs[static_cast<std::size_t>(visibility)] : "";
}

/// `before` and the name of the type; empty without a type.
std::string typed(std::string_view before, const KelType* type, const Labels& labels) {
    return type != nullptr ? std::string(before) + labels.name(type->getName().view()) : std::string();
}

std::string valued(const KelString& value, const Labels& labels) {
    return value.isEmpty() ? std::string() : " = " + labels.line(value.view());
}

std::string declared(const KelArgument& argument, const Labels& labels) {
    return labels.name(argument.getName().view()) + typed(" : ", argument.getType(), labels) +
           valued(argument.initialValue, labels);
}

template <class Arguments>
std::string listed(const Arguments& arguments, const Labels& labels) {
    std::string list;
    for (const KelArgument* argument : arguments) {
        list += (list.empty() ? "" : ", ") + declared(*argument, labels);
    }
    return list;
}

/// Whether it is a multiplicity in the characters of one: it means nothing else in any syntax.
bool isUsual(std::string_view multiplicity) {
    return multiplicity.find_first_not_of("0123456789.,*nN ") == std::string_view::npos && boundsOf(multiplicity);
}

bool isInPrimaryKey(const KelAttribute& attribute) {
    const KelClass* owner = attribute.getAssociatedClass();
    const KelCandidateKey* primary = owner != nullptr ? owner->getPrimaryKey() : nullptr;
    return primary != nullptr && primary->attributes().holds(attribute);
}

} // namespace

std::vector<std::string_view> keywordsOf(const KelClass& one) {
    std::vector<std::string_view> words;
    for (const CategoryWord& row : categoryWords) {
        if (row.category == one.categoryType && foldedStereotype(one.stereotype.view()) != row.word) {
            words.push_back(row.word);
        }
    }
    const bool isTemplate = one.categoryType == KelClassCategoryType::parameterizedClass ||
                            one.categoryType == KelClassCategoryType::parameterizedClassUtility;
    if (isTemplate && one.arguments().isEmpty()) { // else the arguments say so
        words.emplace_back("template");
    }
    if (!isBlank(one.stereotype.view())) {
        words.push_back(one.stereotype.view());
    }
    return words;
}

std::string templateOf(const KelClass& one, const Labels& labels) {
    return listed(one.arguments(), labels);
}

Row rowOf(const KelAttribute& attribute, bool isLiteral, const Labels& labels) {
    std::string text(isLiteral ? "" : signOf(attribute.visibility));
    text += attribute.isDerived ? "/" : "";
    text += labels.name(attribute.getName().view()) + typed(" : ", attribute.getType(), labels) +
            valued(attribute.initialValue, labels);
    text += isInPrimaryKey(attribute) ? " " + labels.line("{id}") : "";
    return {std::move(text), attribute.isStatic};
}

Row rowOf(const KelOperation& operation, std::string_view beforeType, const Labels& labels) {
    return {std::string(signOf(operation.visibility)) + labels.name(operation.getName().view()) + "(" +
                listed(operation.arguments(), labels) + ")" + typed(beforeType, operation.getReturnType(), labels),
            operation.isStatic};
}

std::vector<const KelNote*> notesOf(const KelElement& element) {
    std::vector<const KelNote*> notes;
    for (const KelNote* note : element.notes()) {
        if (!isBlank(note->description.view())) {
            notes.push_back(note);
        }
    }
    return notes;
}

std::string endOf(const KelAssociationRole* role, const KelAssociationRole* other, const Labels& labels) {
    std::string text;
    if (role == nullptr) {
        return text;
    }
    const auto append = [&text](const std::string& part) { text += (text.empty() ? "" : " ") + part; };
    for (const KelForeignKey* key : other->foreignKeys()) { // the class at this end is qualified by them
        std::string qualifiers;
        if (key->getCandidateKey() != nullptr) {
            for (const KelAttribute* attribute : key->getCandidateKey()->attributes()) {
                qualifiers += (qualifiers.empty() ? "" : ", ") + std::string(attribute->getName().view());
            }
        }
        if (!qualifiers.empty()) {
            append(labels.line("[" + qualifiers + "]"));
        }
    }
    if (!role->multiplicity.isEmpty()) {
        const std::string_view multiplicity = role->multiplicity.view();
        append(isUsual(multiplicity) ? std::string(multiplicity) : labels.line(multiplicity));
    }
    if (!role->getName().isEmpty()) {
        append(labels.line(role->getName().view()));
    }
    return text;
}

} // namespace exporter::graph
