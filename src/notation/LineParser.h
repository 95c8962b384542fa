#pragma once

#include "notation/ByteRuns.h"
#include "notation/Line.h"
#include "notation/wordKind.h"

#include <bit>
#include <cstdint>
#include <string_view>

namespace notation {

/// Takes a line apart that has one of the forms of `Line`. All of it is inline: a caller who needs only a part of the
/// line does not pay for the rest.
class LineParser {
public:
    /// `token` is the first token of the line, `line` receives what is in it, except for places and ends. The bytes end
    /// with a NUL; `InputWindow::readable` more can be read.
    LineParser(const char* token, Line& line) : token_(token), value_(token), line_(line) {}

    /// Parses from the first token to the parentheses at the end, and returns the first of them, or the byte where they
    /// would be; null if the line has another form.
    const char* parse(bool isInList) {
        line_.key = {};
        line_.kind = EventKind::end;
        line_.construct = Construct::group;
        if (*token_ == ')') {
            return token_;
        }
        return isInList ? element(token_) : property(token_);
    }

    /// The value or construct; of a `(value Text "...")` the text.
    [[nodiscard]] const char* value() const { return value_; }

    static bool isLetter(char byte) {
        const auto lower = static_cast<unsigned char>(byte | 0x20);
        return static_cast<unsigned char>(lower - 'a') <= 'z' - 'a' || byte == '_';
    }

    /// What the first bytes of a property show: its key, the blanks after it, and the end of the line.
    struct Glance {
        static constexpr unsigned size = 2 * runs::stride;

        explicit Glance(const char* text) {
            const runs::Bytes first = runs::load(text);
            const runs::Bytes second = runs::load(text + runs::stride);
            const auto bits = [&](auto is) {
                return runs::bitsOf(is(first)) | runs::bitsOf(is(second)) << runs::stride;
            };
            ends = bits(endsWord);
            lineEnds = bits([](runs::Bytes bytes) { return bytes == '\n'; });
            keyEnd = static_cast<unsigned>(std::countr_zero(ends | 1U << (size - 1)));
            blanks = static_cast<unsigned>(std::countr_one(bits(runs::areBlank) >> keyEnd));
        }
        /// Whether key and blanks are within the bytes, and the value begins there, too.
        [[nodiscard]] bool isWhole() const { return blanks != 0 && keyEnd + blanks < size; }

        std::uint32_t ends;     ///< of words: a bit for each byte, the first one's the lowest
        std::uint32_t lineEnds; ///< likewise
        unsigned keyEnd;
        unsigned blanks;
    };

    /// Passes the key and the value of a property in an object, if the value is on the line and no construct; returns
    /// null if it is anything else. Most lines are so. `glance` is at the line's first byte, `at`.
    static const char* passScalar(const char* at, const Glance& glance) {
        if (!isLetter(*at) || !glance.isWhole()) {
            return nullptr;
        }
        const char* const value = at + glance.keyEnd + glance.blanks;
        if (*value == '"') {
            const char* const end = runs::endOfQuoted(value + 1);
            return *end == '"' ? end + 1 : nullptr;
        }
        if (*value == '(') {
            return passLocation(value + 1);
        }
        if (!startsWord(*value) && *value != '@') {
            return nullptr;
        }
        const std::uint32_t ends = glance.ends >> (glance.keyEnd + glance.blanks);
        return ends != 0 ? value + std::countr_zero(ends) : endOfWord(value);
    }

    /// Passes a location as it is usually written, from the byte after its "(" on; returns null if it is anything else.
    static const char* passLocation(const char* at) {
        const std::uint32_t digits = runs::bitsOf(runs::areDigits(runs::load(at)));
        const int x = *at == '-' ? 1 : 0;
        const int xEnd = x + std::countr_one(digits >> x);
        const int y = xEnd + (at[xEnd + 2] == '-' ? 3 : 2);
        const int yEnd = y + std::countr_one(digits >> y);
        const bool isWhole = xEnd != x && at[xEnd] == ',' && at[xEnd + 1] == ' ' && yEnd != y && at[yEnd] == ')';
        return isWhole ? at + yEnd + 1 : nullptr;
    }

private:
    /// Ends at the latest where the lexer's word does, and before all bytes that are not ASCII: at the signs up to the
    /// comma, DEL, and what is negative.
    static runs::Flags endsWord(runs::Bytes bytes) {
        return std::bit_cast<runs::Bytes>(std::bit_cast<runs::Unsigned>(bytes) + 1) < ',' + 2;
    }
    static const char* endOfWord(const char* text) {
        return runs::findEnd(text, [](runs::Bytes bytes) { return endsWord(bytes); });
    }
    /// Objects are written with one blank between the parts of their heads.
    static const char* endOfHeadBlanks(const char* at) {
        return *at != ' ' ? at : at[1] != ' ' && at[1] != '\t' ? at + 1 : runs::endOfBlanks(at);
    }

    static bool startsWord(char byte) { return isLetter(byte) || isDigit(byte) || byte == '-'; }
    static bool isDigit(char byte) { return static_cast<unsigned char>(byte - '0') <= 9; }
    static bool startsWith(const char* text, std::string_view wanted) {
        return std::memcmp(text, wanted.data(), wanted.size()) == 0;
    }
    static std::string_view between(const char* begin, const char* end) {
        return {begin, static_cast<std::size_t>(end - begin)};
    }
    /// Whether the lexer does not take it for a word, because of its length.
    static bool isNumber(const char* begin, const char* end) { return between(begin, end).size() < longestNumber; }

    const char* property(const char* at) {
        if (!isLetter(*at)) {
            return nullptr;
        }
        const Glance glance(at);
        const char* keyEnd = at + glance.keyEnd;
        value_ = keyEnd + glance.blanks;
        if (!glance.isWhole()) { // the key is longer than usual
            keyEnd = endOfWord(at);
            value_ = runs::endOfBlanks(keyEnd);
            if (value_ == keyEnd) {
                return nullptr;
            }
        }
        line_.key = between(at, keyEnd);
        switch (*value_) {
        case '"':
            return text(value_);
        case '(':
            return construct(value_ + 1);
        case '@':
            return isDigit(value_[1]) ? reference(value_ + 1) : nullptr;
        default:
            return startsWord(*value_) ? word(endOfWord(value_)) : nullptr;
        }
    }

    const char* word(const char* end) {
        line_.kind = EventKind::word;
        line_.text = between(value_, end);
        return end;
    }

    const char* element(const char* at) {
        if (*at == '"') {
            return text(at);
        }
        if (*at != '(') {
            return nullptr;
        }
        ++at;
        return *at == 'o' ? object(at) : location(at);
    }

    const char* text(const char* at) {
        const char* end = runs::endOfQuoted(++at);
        line_.kind = EventKind::text;
        line_.text = between(at, end);
        return *end == '"' ? end + 1 : nullptr;
    }

    const char* reference(const char* at) {
        const char* end = runs::endOfDigits(at);
        line_.kind = EventKind::reference;
        line_.text = between(at, end);
        return isNumber(at, end) ? end : nullptr;
    }

    // From the byte after "(" on.
    const char* construct(const char* at) {
        switch (*at) {
        case 'o':
            return object(at);
        case 'l':
            return list(at);
        case 'v':
            return textValue(at);
        default:
            return location(at);
        }
    }

    const char* list(const char* at) {
        constexpr std::string_view word = "list";
        if (!startsWith(at, word)) {
            return nullptr;
        }
        const char* kind = runs::endOfBlanks(at += word.size());
        line_.kind = EventKind::start;
        line_.construct = Construct::list;
        line_.text = {};
        if (kind == at || !isLetter(*kind)) {
            return kind; // nothing but ends can follow
        }
        at = endOfWord(kind);
        line_.text = between(kind, at);
        return at;
    }

    const char* textValue(const char* at) {
        constexpr std::string_view head = "value Text ";
        if (!startsWith(at, head)) {
            return nullptr;
        }
        const char* const quote = runs::endOfBlanks(at + head.size());
        at = *quote == '"' ? text(quote) : nullptr;
        if (at == nullptr || *at != ')') {
            return nullptr;
        }
        value_ = quote;
        line_.construct = Construct::value;
        return at + 1;
    }

    const char* location(const char* at) {
        const char* x = at;
        const char* end = number(at);
        if (end == nullptr || *end != ',') {
            return nullptr;
        }
        const char* y = endOfHeadBlanks(end + 1);
        at = number(y);
        line_.kind = EventKind::location;
        line_.text = between(x, end);
        line_.y = between(y, at != nullptr ? at : y);
        return at != nullptr && *at == ')' ? at + 1 : nullptr;
    }

    static const char* number(const char* at) {
        const char* begin = at;
        at += *at == '-' ? 1 : 0;
        at = isDigit(*at) ? runs::endOfDigits(at) : begin;
        return at != begin && isNumber(begin, at) ? at : nullptr;
    }

    const char* object(const char* at) {
        constexpr std::string_view word = "object ";
        if (!startsWith(at, word) || !isLetter(at[word.size()])) {
            return nullptr;
        }
        at += word.size();
        const char* end = endOfWord(at);
        line_.kind = EventKind::start;
        line_.construct = Construct::object;
        line_.text = between(at, end);
        line_.names = {};
        line_.reference = {};
        std::size_t names = 0;
        for (;;) {
            at = endOfHeadBlanks(end);
            if (at == end) {
                return at;
            }
            if (*at == '"' && names < Line::mostNames) {
                end = runs::endOfQuoted(++at);
                line_.names[names++] = between(at, end);
                if (*end++ != '"') {
                    return nullptr;
                }
            } else if (*at == '@' && isDigit(at[1])) {
                end = runs::endOfDigits(++at);
                line_.reference = between(at, end);
                if (!isNumber(at, end)) {
                    return nullptr;
                }
            } else {
                return at; // nothing but ends can follow
            }
        }
    }

    const char* token_;
    const char* value_;
    Line& line_;
};

} // namespace notation
