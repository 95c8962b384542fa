#include "export/sql/SchemaNames.h"

#include "host/text/KelString.h"
#include "text/ascii.h"
#include "text/utf8.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>

namespace exporter::sql {

namespace {

using namespace std::string_view_literals;

/// The columns that every table of PostgreSQL has.
constexpr std::array systemColumns{"cmax"sv, "cmin"sv, "ctid"sv, "tableoid"sv, "xmax"sv, "xmin"sv};
/// Beginnings of the names of PostgreSQL's and SQLite's own tables.
constexpr std::array systemPrefixes{"pg_"sv, "sqlite_"sv};

constexpr UChar32 firstBeyondAscii = 0x80;

bool isWordCharacter(UChar32 character) {
    if (character >= 0 && character < firstBeyondAscii) {
        const int small = character | 0x20;
        return (small >= 'a' && small <= 'z') || (character >= '0' && character <= '9');
    }
    return character >= 0 && (u_isalnum(character) != 0 || ((U_GET_GC_MASK(character) & U_GC_M_MASK) != 0));
}

bool isCapital(UChar32 character) {
    return character < firstBeyondAscii ? character >= 'A' && character <= 'Z' : u_isUUppercase(character) != 0;
}

bool isSmall(UChar32 character) {
    return character < firstBeyondAscii ? character >= 'a' && character <= 'z' : u_isULowercase(character) != 0;
}

void append(std::string& text, UChar32 character) {
    if (character < firstBeyondAscii) {
        text += static_cast<char>(character);
        return;
    }
    std::array<char, U8_MAX_LENGTH> bytes{};
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes.data(), length, character);
    text.append(bytes.data(), length);
}

std::string snake(std::string_view text) {
    std::string name;
    UChar32 last = 0; // the last character, if it is a letter or a digit
    for (std::size_t at = 0; at < text.size();) {
        const UChar32 character = text::nextCharacter(text, at);
        if (!isWordCharacter(character)) {
            if (name.empty() || last != 0) {
                name += '_';
            }
            last = 0;
            continue;
        }
        if (last != 0 && isCapital(character)) {
            std::size_t ahead = at;
            const UChar32 next = at < text.size() ? text::nextCharacter(text, ahead) : 0;
            const bool endsCapitals = isCapital(last) && next > 0 && isSmall(next);
            if (isSmall(last) || u_isdigit(last) != 0 || endsCapitals) {
                name += '_';
            }
        }
        append(name, character < firstBeyondAscii ? text::lower(static_cast<char>(character)) : u_tolower(character));
        last = character;
    }
    return name;
}

/// In any case.
bool beginsWith(std::string_view text, std::string_view small) {
    return std::ranges::equal(text.substr(0, small.size()), small, {}, text::lower);
}

bool isOfSystem(std::string_view column) {
    return std::ranges::any_of(
               systemColumns,
               [&](std::string_view name) { return name.size() == column.size() && beginsWith(column, name); }) ||
           column == "ROWID"; // in capitals no column of Oracle, even in quotes
}

bool allowsAny(int character, bool /*isFirst*/) {
    return character != '"'; // Oracle has no names with it
}

} // namespace

std::string utf8(const KelString& text) {
    return text::repairedUtf8(text.view());
}

std::string styled(std::string_view text, const NameStyle& style) {
    if (style.isSnake) {
        return snake(text);
    }
    std::string name(text);
    std::ranges::replace(name, '"', '_');
    return name;
}

NameRules NameSpace::rulesFor(const NameStyle& style) {
    return {.longest = style.longest, .allows = allowsAny, .foldsCase = true, .reserved = {}, .quote = '"'};
}

Name NameSpace::make(std::string_view styledText) {
    std::string_view text = styledText;
    std::string prefixed;
    Name name;
    if (kind_ == Kind::columns && isOfSystem(text)) {
        static_cast<void>(names_.make(text));
    }
    if (kind_ == Kind::relations &&
        std::ranges::any_of(systemPrefixes, [&](std::string_view prefix) { return beginsWith(text, prefix); })) {
        text = prefixed.append("_").append(styledText);
        name.change.isMade = true;
    }
    name.change.isMade = name.change.isMade || text.empty();
    name.text = names_.make(text);
    name.change.isCut = text.size() > rules_.longest;
    const std::size_t wanted = std::max<std::size_t>(text.size(), 1); // "_" for an empty text
    const std::size_t last = name.text.find_last_of('_');
    const bool endsInHash = last != std::string::npos && name.text.size() - last == 9;
    name.change.isNumbered = name.change.isCut ? !endsInHash : name.text.size() > wanted;
    return name;
}

} // namespace exporter::sql
