#include "export/sql/columnTypes.h"

#include "export/options.h"
#include "host/model/KelType.h"
#include "text/ascii.h"
#include "text/escape.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <fstream>

namespace exporter::sql {

namespace {

using enum Family;

struct NamedFamily {
    std::string_view name; // or several, with "|" around each
    Family family;
    std::uint32_t length = 0; // when the name gives none
};

/// The data types of the repository.
constexpr std::array dataTypes{
    NamedFamily{"SQL_INTEGER", integer},
    NamedFamily{"SQL_SMALLINT", smallInteger},
    NamedFamily{"SQL_TINYINT", smallInteger},
    NamedFamily{"SQL_BIGINT", bigInteger},
    NamedFamily{"SQL_NUMERIC", number},
    NamedFamily{"SQL_DECIMAL", number},
    NamedFamily{"SQL_FLOAT", doubleReal},
    NamedFamily{"SQL_REAL", real},
    NamedFamily{"SQL_DOUBLE", doubleReal},
    NamedFamily{"SQL_BOOLEAN", boolean},
    NamedFamily{"SQL_BIT", boolean},
    NamedFamily{"SQL_DATE", date},
    NamedFamily{"SQL_TIME", time},
    NamedFamily{"SQL_TIMESTAMP", timestamp},
    NamedFamily{"SQL_BINARY", binary},
    NamedFamily{"SQL_VARBINARY", binary},
    NamedFamily{"SQL_LONGVARBINARY", binary},
    NamedFamily{"SQL_CHAR", fixedText, 1},
    NamedFamily{"SQL_WCHAR", fixedText, 1},
    NamedFamily{"SQL_VARCHAR", text},
    NamedFamily{"SQL_WVARCHAR", text},
    NamedFamily{"SQL_LONGVARCHAR", text},
    NamedFamily{"SQL_WLONGVARCHAR", text},
};

/// Names of types in lower case, of languages, libraries and databases: the last part of a path.
constexpr std::array wellKnown{
    NamedFamily{"|string|str|estring|wstring|cstring|qstring|ansistring|widestring|stringbuffer|"
                "stringbuilder|charsequence|bstr|lpstr|lpcstr|lptstr|lpctstr|text|memo|clob|"
                "nclob|ntext|varchar|varchar2|nvarchar|nvarchar2|character varying|long varchar|"
                "rowid|",
                text},
    NamedFamily{"|char|nchar|wchar|wchar_t|tchar|character|echar|echaracterobject|", fixedText, 1},
    NamedFamily{"|uuid|guid|", fixedText, 36},
    NamedFamily{"|int|integer|eint|eintegerobject|signed|signed int|int32|int32_t|uint16|uint16_t|"
                "unsigned short|ushort|word|",
                integer},
    NamedFamily{"|short|eshort|eshortobject|smallint|tinyint|int16|int16_t|int8|int8_t|uint8|"
                "uint8_t|byte|ebyte|ebyteobject|sbyte|octet|unsigned char|",
                smallInteger},
    NamedFamily{"|long|elong|elongobject|long long|unsigned|unsigned int|unsigned long|uint|uint32|"
                "uint32_t|dword|int64|int64_t|__int64|bigint|size_t|",
                bigInteger},
    NamedFamily{"|number|numeric|decimal|dec|bigdecimal|ebigdecimal|biginteger|ebiginteger|uint64|"
                "uint64_t|unsigned long long|currency|",
                number},
    NamedFamily{"|float|efloat|efloatobject|single|", real},
    NamedFamily{"|real|double|double precision|long double|edouble|edoubleobject|", doubleReal},
    NamedFamily{"|bool|boolean|eboolean|ebooleanobject|bit|", boolean},
    NamedFamily{"|date|localdate|", date},
    NamedFamily{"|edate|datetime|datetime2|smalldatetime|timestamp|localdatetime|instant|calendar|", timestamp},
    NamedFamily{"|time|localtime|", time},
    NamedFamily{"|blob|bytea|binary|varbinary|image|raw|long raw|ebytearray|", binary},
};

template <class Number>
std::optional<Number> numberOf(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

constexpr std::uint32_t mostDigits = 38; // the fewest that the systems allow at most
constexpr std::uint32_t mostCharacters = 10'485'760;
constexpr std::uint32_t mostFixedCharacters = 2'000;

/// The type with this length and scale as far as every system has them.
ColumnType sized(Family family, std::uint32_t length, std::uint32_t scale) {
    ColumnType type{.family = family, .length = 0, .scale = 0, .sql = {}};
    const bool isText = family == text || family == fixedText;
    if (isText && length <= mostCharacters) {
        type.length = length;
        type.family = length > mostFixedCharacters ? text : family;
    } else if (family == number && length <= mostDigits && scale <= length) {
        type.length = length;
        type.scale = scale;
    } else if (isText) {
        type.family = text;
    }
    return type;
}

/// The words of a type's name without those that say nothing of what it holds, and "*", "&" and brackets.
struct PlainName {
    std::string words;
    bool isPointer = false;
    bool isArray = false;
    std::uint32_t length = 0;
    std::uint32_t scale = 0;
};

PlainName plainName(std::string_view name) {
    PlainName plain;
    const std::size_t bracket = name.find_first_of("([");
    if (bracket != std::string_view::npos) {
        plain.isArray = name[bracket] == '[';
        const std::string_view inside = name.substr(bracket + 1, name.find_first_of(")]", bracket) - bracket - 1);
        const std::size_t comma = inside.find(',');
        const std::string_view first = text::trimmed(inside.substr(0, std::min(comma, inside.find(' '))));
        plain.length = numberOf<std::uint32_t>(first).value_or(0);
        if (comma != std::string_view::npos) {
            plain.scale = numberOf<std::uint32_t>(text::trimmed(inside.substr(comma + 1))).value_or(mostDigits + 1);
        }
        name = name.substr(0, bracket);
    }
    plain.isPointer = name.find('*') != std::string_view::npos;
    std::string word;
    for (std::size_t at = 0; at <= name.size(); ++at) {
        const char byte = at < name.size() ? name[at] : ' ';
        if (byte != ' ' && byte != '\t' && byte != '*' && byte != '&') {
            word += byte;
            continue;
        }
        if (!word.empty() && word != "const" && word != "volatile" && word != "static") {
            plain.words += (plain.words.empty() ? "" : " ") + word;
        }
        word.clear();
    }
    plain.words = text::lowerCase(text::lastPart(plain.words));
    return plain;
}

/// Whether a C or C++ spelling of characters is a text.
bool isCharacters(std::string_view words) {
    return words == "char" || words == "wchar_t" || words == "tchar" || words == "wchar" || words == "signed char" ||
           words == "unsigned char";
}

constexpr std::size_t longestDefault = 1'000; // bytes; longer ones belong into a program

std::optional<std::string> quotedText(std::string_view value) {
    const bool isQuoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                          value.back() == value.front() && value.size() <= longestDefault;
    if (!isQuoted) {
        return std::nullopt;
    }
    const std::string_view content = value.substr(1, value.size() - 2);
    const bool isPlain = content.find('\\') == std::string_view::npos &&
                         content.find(value.front()) == std::string_view::npos && text::isValidUtf8(content);
    std::size_t at = 0;
    while (isPlain && at < content.size()) {
        if (!text::isPrintable(text::nextCharacter(content, at))) {
            return std::nullopt;
        }
    }
    return isPlain ? std::optional(std::string(content)) : std::nullopt;
}

constexpr int mostExponent = 20; // with 15 digits on each side of the point within what a `real` holds

/// The digits after the "e" of a number with an exponent, which columns without exact digits may have.
std::optional<std::string> exponentOf(std::string_view digits, const ColumnType& type) {
    digits.remove_prefix(digits.starts_with('+') ? 1 : 0);
    const auto exponent = digits.starts_with('+') ? std::nullopt : numberOf<int>(digits);
    const bool isTaken = type.family != number && exponent && *exponent >= -mostExponent && *exponent <= mostExponent;
    return isTaken ? std::optional("e" + std::to_string(*exponent)) : std::nullopt;
}

/// A decimal number without the letter that ends it in programs, as every system reads it.
std::optional<std::string> decimalOf(std::string_view value, const ColumnType& type) {
    while (!value.empty() && std::string_view("fFdDlL").find(value.back()) != std::string_view::npos) {
        value.remove_suffix(1);
    }
    std::string exponent;
    if (const std::size_t at = value.find_first_of("eE"); at != std::string_view::npos) {
        const std::optional<std::string> found = exponentOf(value.substr(at + 1), type);
        if (!found) {
            return std::nullopt;
        }
        exponent = *found;
        value = value.substr(0, at);
    }
    const bool isSigned = value.starts_with('-') || value.starts_with('+');
    const std::string_view digits = value.substr(isSigned ? 1 : 0);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::string_view whole = digits.substr(0, point);
    const std::string_view decimals = digits.substr(std::min(point + 1, digits.size()));
    const auto isDigits = [](std::string_view text) {
        return std::ranges::all_of(text, [](char byte) { return byte >= '0' && byte <= '9'; });
    };
    const std::size_t most = type.length > 0 ? type.length - type.scale : 15;
    if (whole.size() + decimals.size() == 0 || whole.size() > most || decimals.size() > 15 || !isDigits(whole) ||
        !isDigits(decimals)) {
        return std::nullopt;
    }
    const std::string sign = value.starts_with('-') ? "-" : "";
    return sign + (whole.empty() ? "0" : std::string(whole)) + (decimals.empty() ? "" : "." + std::string(decimals)) +
           exponent;
}

struct WholeRange {
    Family family;
    std::int64_t most;
};

constexpr std::array wholeRanges{
    WholeRange{smallInteger, 32'767},
    WholeRange{integer, 2'147'483'647},
    WholeRange{bigInteger, 999'999'999'999'999'999},
};

std::optional<std::string> wholeOf(std::string_view value, std::int64_t most) {
    if (value.starts_with('+')) {
        value.remove_prefix(value.starts_with("+-") ? value.size() : 1);
    }
    while (!value.empty() && std::string_view("lLuU").find(value.back()) != std::string_view::npos) {
        value.remove_suffix(1);
    }
    const auto number = numberOf<std::int64_t>(value);
    return number && *number >= -most && *number <= most ? std::optional(std::to_string(*number)) : std::nullopt;
}

std::size_t charactersOf(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) {
        static_cast<void>(text::nextCharacter(text, at));
    }
    return count;
}

/// Families whose columns every system compares with each other.
int comparisonOf(Family family) {
    switch (family) {
    case smallInteger:
    case integer:
    case bigInteger:
    case number:
        return 1;
    case real:
    case doubleReal:
        return 2;
    case text:
    case fixedText:
        return 3;
    default:
        return 4 + static_cast<int>(family);
    }
}

} // namespace

std::optional<ColumnType> typeOfName(std::string_view name) {
    const PlainName plain = plainName(name);
    if (isCharacters(plain.words) && (plain.isPointer || plain.isArray)) {
        return sized(text, plain.length, 0);
    }
    if (plain.isArray) {
        const bool isBytes = plain.words == "byte" || plain.words == "octet" || plain.words == "uint8_t";
        return isBytes ? std::optional(ColumnType{.family = binary, .length = 0, .scale = 0, .sql = {}}) : std::nullopt;
    }
    const std::string wanted = "|" + plain.words + "|";
    const auto* found = std::ranges::find_if(
        wellKnown, [&](const NamedFamily& row) { return row.name.find(wanted) != std::string_view::npos; });
    if (found == wellKnown.end() || plain.words.empty() || name.find_first_of("<|") != std::string_view::npos) {
        return std::nullopt;
    }
    return sized(found->family, plain.length > 0 ? plain.length : found->length, plain.scale);
}

namespace {

/// Whether the text cannot end the column that it is the type of: another statement, a comment, an open bracket or
/// quote.
bool isWholeType(std::string_view type) {
    int depth = 0;
    for (const char byte : type) {
        depth += byte == '(' ? 1 : byte == ')' ? -1 : 0;
        if (depth < 0) {
            return false;
        }
    }
    const bool hasOpenQuote = std::ranges::count(type, '\'') % 2 != 0 || std::ranges::count(type, '"') % 2 != 0;
    return !type.empty() && depth == 0 && !hasOpenQuote && type.find(';') == std::string_view::npos &&
           type.find("--") == std::string_view::npos && type.find("/*") == std::string_view::npos;
}

} // namespace

TypeMap::TypeMap(const std::string& path) {
    std::ifstream file(path);
    std::string line;
    int number = 0;
    while (std::getline(file, line)) {
        ++number;
        if (number == 1 && line.starts_with("\xEF\xBB\xBF")) { // a mark of UTF-8
            line.erase(0, 3);
        }
        const std::string_view content = text::trimmed(line);
        if (content.empty() || content.starts_with('#')) {
            continue;
        }
        const std::size_t equals = content.find('=');
        const std::string_view name = text::trimmed(content.substr(0, std::min(equals, content.size())));
        const std::string_view type =
            equals == std::string_view::npos ? std::string_view() : text::trimmed(content.substr(equals + 1));
        if (name.empty() || !isWholeType(type)) {
            throw WrongOption("line " + std::to_string(number) + " of '" + path + "' is not NAME = SQL TYPE");
        }
        const std::optional<ColumnType> known = typeOfName(type);
        ColumnType mapped = known.value_or(ColumnType{.family = other, .length = 0, .scale = 0, .sql = {}});
        mapped.sql = type;
        byName_.insert_or_assign(text::lowerCase(name), std::move(mapped));
    }
    if (number == 0 && !file.eof()) {
        throw WrongOption("the type map '" + path + "' cannot be read");
    }
}

std::optional<ColumnType> TypeMap::ofUser(std::string_view typeName) const {
    if (byName_.empty()) {
        return std::nullopt;
    }
    const std::string name = text::lowerCase(text::trimmed(typeName));
    auto found = byName_.find(name);
    if (found == byName_.end()) {
        found = byName_.find(plainName(typeName).words);
    }
    return found != byName_.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<ColumnType> TypeMap::known(const KelType* type) {
    if (type == nullptr) {
        return std::nullopt;
    }
    std::optional<ColumnType> named = typeOfName(type->getName().view());
    const auto* row = std::ranges::find(dataTypes, type->getDataType().view(), &NamedFamily::name);
    const bool isTextMeant = named && named->family == text && (row == dataTypes.end() || row->family == binary);
    if (row == dataTypes.end() || isTextMeant) {
        return named;
    }
    const auto length = static_cast<std::uint32_t>(std::max(type->getLength(), 0));
    const auto scale = static_cast<std::uint32_t>(type->getScale() >= 0 ? type->getScale() : mostDigits + 1);
    return sized(row->family, length > 0 ? length : row->length, scale);
}

std::optional<Default> literalOf(std::string_view initialValue, const ColumnType& type, const Values* values) {
    const std::string_view value = text::trimmed(initialValue);
    const auto made = [](Default::Kind kind, std::optional<std::string> text) {
        return text ? std::optional(Default{.kind = kind, .value = *std::move(text)}) : std::nullopt;
    };
    if (values != nullptr) {
        for (const std::string_view word : {value, text::lastPart(value)}) {
            if (std::ranges::find(*values, word) != values->end()) {
                return made(Default::Kind::text, std::string(word));
            }
        }
        std::optional<std::string> quoted = quotedText(value);
        const bool isOne = quoted && std::ranges::find(*values, *quoted) != values->end();
        return isOne ? made(Default::Kind::text, std::move(quoted)) : std::nullopt;
    }
    if (const auto* range = std::ranges::find(wholeRanges, type.family, &WholeRange::family);
        range != wholeRanges.end()) {
        return made(Default::Kind::number, wholeOf(value, range->most));
    }
    if (type.family == number || type.family == real || type.family == doubleReal) {
        return made(Default::Kind::number, decimalOf(value, type));
    }
    if (type.family == boolean) {
        const std::string word = text::lowerCase(value);
        return word == "true" || word == "false" ? made(Default::Kind::boolean, word) : std::nullopt;
    }
    if (type.family == text || type.family == fixedText) {
        std::optional<std::string> quoted = quotedText(value);
        const bool fits = quoted && (type.length == 0 || charactersOf(*quoted) <= type.length);
        return fits ? made(Default::Kind::text, std::move(quoted)) : std::nullopt;
    }
    return std::nullopt;
}

bool areComparable(const ColumnType& one, const ColumnType& other) {
    if (one.family == Family::other || other.family == Family::other) {
        return one.sql == other.sql;
    }
    return comparisonOf(one.family) == comparisonOf(other.family);
}

} // namespace exporter::sql
