// The usual events, straight from the bytes.
//
// `anyEvent` defines what is read: it takes the file apart into tokens and decides token by token. Nearly all events
// of a sound file have one of a few forms, and these are recognised here at once:
//
//     key value       in an object; the value is a number, a reference, a location, a quoted text or a word on the line
//                     of the key, or the first line of a "|" text on the line after it
//     value           in a list, a value or a group
//     |...            a further line of a text
//     (object Kind "name" ... @7   (list Kind   (value Kind   (      as a property's value, or in a list ...
//     )
//
// All else is left to `anyEvent`: damage, comments, control bytes, names that must be cut, a token that the end of the
// window cuts. A form need not cover all that the notation allows, but if it matches:
//
// - The event is the one that `anyEvent` would make. Where that depends on the token after it, as the end of an
//   object's names does, the form includes a look at that token.
// - The lexer, the nesting and `continuing_` are as if `anyEvent` had made the event and read no further. Nothing else
//   is kept from an event after which all tokens have been processed (`consumes_`) to the next.
//
// If no form matches, nothing has changed. The bytes looked at in vain are those of the tokens that `anyEvent` then
// reads for its next event, so time remains proportional to the file.

#include "notation/ByteClasses.h"
#include "notation/ByteRuns.h"
#include "notation/Reader.h"
#include "notation/wordKind.h"

namespace notation {

namespace {

static_assert(InputWindow::readable >= runs::stride);

bool isBlank(char byte) {
    return byte == ' ' || byte == '\t';
}

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isLetter(char byte) {
    const auto small = static_cast<char>(byte | 0x20);
    return small >= 'a' && small <= 'z';
}

bool isLineEnd(const char* at) {
    return *at == '\n' || (*at == '\r' && at[1] == '\n');
}

/// Whether a word before this byte ends here, and not only the window.
bool endsWord(char byte) {
    return byte != '\0' && endsRun<stopsWord>(byte);
}

template <std::size_t size>
bool startsWith(const char* text, const char (&word)[size]) {
    static_assert(size - 1 <= runs::stride);
    return std::memcmp(text, word, size - 1) == 0;
}

std::string_view between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

// The ends of tokens that begin at `at`; null for one that is unusual.

const char* endOfKind(const char* at) {
    const char* const end = runs::endOfLetters(at);
    return isLetter(*at) && endsWord(*end) ? end : nullptr;
}

const char* endOfDigits(const char* at, const char* digits) {
    const char* const end = runs::endOfDigits(digits);
    return end != digits && endsWord(*end) && between(at, end).size() <= longestNumber ? end : nullptr;
}

const char* endOfInteger(const char* at) {
    return endOfDigits(at, at + (*at == '-' ? 1 : 0));
}

const char* endOfReference(const char* at) {
    return endOfDigits(at, at + 1);
}

/// The closing quote of a text whose opening one is at `at`.
const char* closingQuote(const char* at) {
    for (++at;;) {
        at = runs::endOfQuoted(at);
        switch (*at) {
        case '"':
            return at;
        case '\\':
            at += at[1] == '"' || at[1] == '\\' ? 2 : 1;
            break;
        case '\t':
            ++at;
            break;
        default:
            return nullptr;
        }
    }
}

/// The LF, or the CR before it.
const char* endOfLine(const char* at) {
    const char* end = runs::endOfPrintable(at);
    while (*end == '\t') {
        end = runs::endOfPrintable(end + 1);
    }
    return isLineEnd(end) ? end : nullptr;
}

} // namespace

/// One attempt. Each of the functions that match a form makes the event and returns true, or returns false.
class Reader::Usual {
public:
    explicit Usual(Reader& reader)
        : reader_(reader), here_(reader.lexer_.cursor()), window_(reader.window_.begin()),
          windowOffset_(reader.window_.offsetOf(window_)), isInObject_(reader.nesting_.isWithin(Construct::object)) {}

    bool read() {
        passToToken(here_);
        const char* const at = here_.at;
        switch (*at) {
        case ')':
            return end(at);
        case '|':
            return line(at);
        default:
            return isInObject_ ? property(at) : value(at);
        }
    }

private:
    bool property(const char* at) {
        const char* const keyEnd = endOfKind(at);
        if (keyEnd == nullptr || !isBlank(*keyEnd) || isTooLong(at, keyEnd)) {
            return false;
        }
        key_ = between(at, keyEnd);
        keyPlace_ = placeOf(at);
        at = runs::endOfBlanks(keyEnd);
        if (isLetter(*at)) {
            return word(at);
        }
        if (*at == '\n' || *at == '\r') {
            here_.at = at;
            return passLineEnd(here_) && *here_.at == '|' && line(here_.at);
        }
        return value(at);
    }

    /// In an object, `key_` has been read.
    bool value(const char* at) {
        switch (*at) {
        case '"':
            return text(at);
        case '(':
            return isDigit(at[1]) || at[1] == '-' ? location(at) : construct(at);
        case '@':
            return reference(at);
        default:
            return number(at);
        }
    }

    bool text(const char* at) {
        const char* const quote = closingQuote(at);
        return quote != nullptr && scalar(EventKind::text, between(at + 1, quote), at, quote + 1);
    }

    bool number(const char* at) {
        if (const char* const end = endOfInteger(at); end != nullptr) {
            return scalar(EventKind::integer, between(at, end), at, end);
        }
        const char* const end = endOfRun<stopsWord>(at);
        const std::string_view run = between(at, end);
        return endsWord(*end) && wordKind(run) == TokenKind::real && scalar(EventKind::real, run, at, end);
    }

    bool reference(const char* at) {
        const char* const end = endOfReference(at);
        return end != nullptr && scalar(EventKind::reference, between(at + 1, end), at, end);
    }

    bool word(const char* at) {
        const char* const end = endOfKind(at);
        if (end == nullptr) {
            return false;
        }
        const std::string_view word = between(at, end);
        return scalar(word == "TRUE" || word == "FALSE" ? EventKind::flag : EventKind::word, word, at, end);
    }

    bool line(const char* at) {
        const bool continues = here_.barLine != 0 && here_.barLine + 1 == here_.line;
        if (continues ? !reader_.continuing_ : isInObject_ && key_.empty()) {
            return false;
        }
        const char* const textEnd = endOfLine(at + 1);
        if (textEnd == nullptr) {
            return false;
        }
        here_.barLine = here_.line;
        scalar(EventKind::line, between(at + 1, textEnd), at, textEnd + (*textEnd == '\r' ? 1 : 0));
        reader_.event_.continues = continues;
        reader_.event_.startsLine = true;
        return true;
    }

    bool scalar(EventKind kind, std::string_view text, const char* at, const char* end) {
        make(kind, at, end).text = text;
        reader_.continuing_ = true;
        return true;
    }

    bool location(const char* open) {
        const char* const xEnd = endOfInteger(open + 1);
        if (xEnd == nullptr || *xEnd != ',') {
            return false;
        }
        const char* const y = runs::endOfBlanks(xEnd + 1);
        const char* const yEnd = endOfInteger(y);
        if (yEnd == nullptr || *yEnd != ')' || isTooLong(open, yEnd)) {
            return false;
        }
        Event& event = make(EventKind::location, open, yEnd + 1);
        event.text = between(open + 1, xEnd);
        event.y = between(y, yEnd);
        return true;
    }

    bool construct(const char* open) {
        if (startsWith(open, "(object ")) {
            return object(open, open + std::strlen("(object "));
        }
        if (startsWith(open, "(list ")) {
            return list(Construct::list, open, open + std::strlen("(list "));
        }
        if (startsWith(open, "(value ")) {
            return list(Construct::value, open, open + std::strlen("(value "));
        }
        return open[1] == '"' && start(Construct::group, open, {}, open + 1);
    }

    bool object(const char* open, const char* kind) {
        const char* const kindEnd = endOfKind(kind);
        if (kindEnd == nullptr) {
            return false;
        }
        std::size_t nameCount = 0;
        std::string_view reference;
        const char* end = kindEnd;
        Lexer::Cursor next = here_;
        for (;;) {
            next.at = runs::endOfBlanks(end);
            if (*next.at == '"') {
                const char* const quote = closingQuote(next.at);
                if (quote == nullptr || nameCount == mostNames) {
                    return false;
                }
                const std::string_view name = between(next.at + 1, quote);
                reader_.names_[nameCount++] = {name, name.size(), true, offsetOf(name.data())};
                end = quote + 1;
            } else if (*next.at == '@') {
                end = endOfReference(next.at);
                if (end == nullptr) {
                    return false;
                }
                reference = between(next.at + 1, end);
            } else {
                break;
            }
        }
        passToToken(next);
        const bool namesEnd = isLetter(*next.at) || *next.at == '(' || *next.at == ')';
        if (!namesEnd || !start(Construct::object, open, between(kind, kindEnd), end)) {
            return false;
        }
        reader_.event_.names = {reader_.names_.data(), nameCount};
        reader_.event_.reference = reference;
        return true;
    }

    bool list(Construct construct, const char* open, const char* kind) {
        const char* const end = endOfKind(kind);
        if (end == nullptr) {
            return false;
        }
        // A "|" text on this line would be taken for more of the kind, if it continued one on the line before.
        const char* const next = runs::endOfBlanks(end);
        const bool kindEnds = isLineEnd(next) || *next == '"' || *next == '(' || *next == ')';
        return kindEnds && start(construct, open, between(kind, end), end);
    }

    bool start(Construct construct, const char* open, std::string_view kind, const char* end) {
        if (isTooLong(open, end) || reader_.nesting_.depth() >= reader_.settings_.deepest) {
            return false;
        }
        Event& event = make(EventKind::start, open, end);
        event.construct = construct;
        event.text = kind;
        reader_.nesting_.push({event.place, here_.indent, construct});
        return true;
    }

    bool end(const char* at) {
        const Nesting::Open open = reader_.nesting_.innermost();
        reader_.nesting_.pop();
        Event& event = make(EventKind::end, at, at + 1);
        event.construct = open.construct;
        event.place = open.place;
        return true;
    }

    /// Makes an event of the key and the bytes from `at` to `end`, and moves the lexer behind it.
    Event& make(EventKind kind, const char* at, const char* end) {
        reader_.clearEvent(kind, key_, keyPlace_, placeOf(at));
        reader_.event_.depth = reader_.nesting_.depth();
        reader_.event_.end = offsetOf(end);
        reader_.continuing_ = false;
        here_.at = end;
        reader_.lexer_.moveTo(here_);
        return reader_.event_;
    }

    void passToToken(Lexer::Cursor& cursor) const {
        if (isBlank(*cursor.at)) {
            cursor.at = runs::endOfBlanks(cursor.at);
        }
        while (passLineEnd(cursor)) {
        }
    }

    /// Passes the end of a line and the next line's indentation; returns whether the cursor is at the end of a line.
    bool passLineEnd(Lexer::Cursor& cursor) const {
        const char* const lineEnd = cursor.at + (*cursor.at == '\r' ? 1 : 0);
        if (*lineEnd != '\n') {
            return false;
        }
        const char* const start = lineEnd + 1;
        const runs::Bytes bytes = runs::load(start);
        const auto tabs = static_cast<std::uint32_t>(std::countr_one(runs::bitsOf(bytes == '\t')));
        const auto spaces = static_cast<std::uint32_t>(std::countr_one(runs::bitsOf(bytes == ' ') >> tabs));
        ++cursor.line;
        cursor.lineStart = offsetOf(start);
        cursor.indent = tabs * Lexer::tabWidth + spaces;
        cursor.at = start + tabs + spaces;
        for (; isBlank(*cursor.at); ++cursor.at) { // of an indentation that is long, or has tabs after spaces
            cursor.indent += *cursor.at == ' ' ? 1 : Lexer::tabWidth - cursor.indent % Lexer::tabWidth;
        }
        return true;
    }

    /// Whether a word between these may have to be cut.
    [[nodiscard]] bool isTooLong(const char* begin, const char* end) const {
        return between(begin, end).size() > reader_.settings_.longestName;
    }

    [[nodiscard]] std::uint64_t offsetOf(const char* at) const {
        return windowOffset_ + static_cast<std::uint64_t>(at - window_);
    }

    [[nodiscard]] Place placeOf(const char* at) const {
        const std::uint64_t offset = offsetOf(at);
        return {offset, here_.line, offset - here_.lineStart + 1};
    }

    Reader& reader_;
    Lexer::Cursor here_;
    const char* window_;
    std::uint64_t windowOffset_;
    bool isInObject_;
    std::string_view key_; // of the property whose value is read, and that value's event
    Place keyPlace_;
};

bool Reader::usualEvent() {
    return lexer_.isAfterToken() && damages_.empty() && !nesting_.isEmpty() && Usual(*this).read();
}

} // namespace notation
