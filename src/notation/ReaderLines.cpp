// Reads lines whole that have one of the forms of `Line`. Everything else is left to the lexer, which goes on at the
// start of the line then.

#include "notation/ByteRuns.h"
#include "notation/Reader.h"
#include "notation/wordKind.h"

#include <utility>

namespace notation {

namespace {

static_assert(InputWindow::readable >= runs::stride);

/// Ends at the latest where the lexer's word does, and before all bytes that are not ASCII: at the signs up to the
/// comma, DEL, and what is negative.
const char* endOfWord(const char* text) {
    return runs::findEnd(text, [](runs::Bytes bytes) { return (bytes <= ',') | (bytes == '\x7F'); });
}

bool isLetter(char byte) {
    const auto lower = static_cast<unsigned char>(byte | 0x20);
    return static_cast<unsigned char>(lower - 'a') <= 'z' - 'a' || byte == '_';
}

bool isDigit(char byte) {
    return static_cast<unsigned char>(byte - '0') <= 9;
}

bool startsWith(const char* text, std::string_view wanted) {
    return std::memcmp(text, wanted.data(), wanted.size()) == 0;
}

std::string_view between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

/// Whether the lexer does not take it for a word, because of its length.
bool isNumber(const char* begin, const char* end) {
    return between(begin, end).size() < longestNumber;
}

/// Parses a line. The functions return the first byte after what they have read, or null if it is something else.
class LineParser {
public:
    LineParser(const char* token, Line& line) : token_(token), line_(line) {}

    /// From the first token to the parentheses at the end.
    const char* parse(bool isInList) {
        line_.key = {};
        line_.kind = EventKind::end;
        line_.construct = Construct::group;
        if (*token_ == ')') {
            return token_;
        }
        return isInList ? element(token_) : property(token_);
    }

    /// Passes blanks and the end of the line.
    static const char* endLine(const char* at) {
        if (*at != '\n') {
            at = runs::endOfBlanks(at);
            at += *at == '\r' ? 1 : 0;
        }
        return *at == '\n' ? at + 1 : nullptr;
    }

private:
    void setValue(const char* at) { line_.valueBegin = line_.place.offset + static_cast<std::uint64_t>(at - token_); }

    const char* property(const char* at) {
        if (!isLetter(*at)) {
            return nullptr;
        }
        const char* end = endOfWord(at);
        line_.key = between(at, end);
        const char* value = runs::endOfBlanks(end);
        if (value == end) {
            return nullptr;
        }
        setValue(value);
        switch (*value) {
        case '"':
            return text(value);
        case '(':
            return construct(value + 1);
        case '@':
            return isDigit(value[1]) ? reference(value + 1) : nullptr;
        default:
            return isLetter(*value) || isDigit(*value) || *value == '-' ? word(value) : nullptr;
        }
    }

    const char* element(const char* at) {
        line_.valueBegin = line_.place.offset;
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

    const char* word(const char* at) {
        const char* end = endOfWord(at);
        line_.kind = EventKind::word;
        line_.text = between(at, end);
        return end;
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
            return value(at);
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

    const char* value(const char* at) {
        constexpr std::string_view head = "value Text ";
        if (!startsWith(at, head)) {
            return nullptr;
        }
        at = runs::endOfBlanks(at + head.size());
        setValue(at);
        line_.construct = Construct::value;
        at = *at == '"' ? text(at) : nullptr;
        return at != nullptr && *at == ')' ? at + 1 : nullptr;
    }

    const char* location(const char* at) {
        const char* x = at;
        const char* end = number(at);
        if (end == nullptr || *end != ',') {
            return nullptr;
        }
        const char* y = runs::endOfBlanks(end + 1);
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
            at = *end == ' ' ? runs::endOfBlanks(end) : end;
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
    Line& line_;
};

constexpr std::ptrdiff_t usualLine = 4096; // with the blank lines after it

/// Passes blank lines. Moves `line` to the next token's line and returns that token; null if it is none that begins a
/// line of its own.
const char* findNext(LineStart& line, bool isAfterHead) {
    const char* at = runs::endOfBlanks(line.begin);
    while (*at == '\n' || (at[0] == '\r' && at[1] == '\n')) {
        line.begin = at + (*at == '\r' ? 2 : 1);
        ++line.number;
        at = runs::endOfBlanks(line.begin);
    }
    line.token = at;
    // A text or reference would belong to the head of an object.
    return isLetter(*at) || *at == '(' || *at == ')' || (!isAfterHead && (*at == '"' || *at == '|')) ? at : nullptr;
}

std::uint32_t indentOf(const LineStart& line) {
    std::uint32_t indent = line.indent;
    for (const char* blank = line.begin; blank != line.token; ++blank) {
        indent += *blank == '\t' ? Lexer::tabWidth - indent % Lexer::tabWidth : 1;
    }
    return indent;
}

} // namespace

const Line* Reader::nextLine(std::uint64_t before) {
    LineStart after;
    if (!parseLine(before, after)) {
        leaveLines();
        return nullptr;
    }
    takeLine(after);
    return &line_;
}

Skimmed Reader::skim(std::uint64_t before, const TakeObject& take) {
    Skimmed skimmed;
    std::size_t constructs = nesting_.depthInObject(); // the object and what is open in it
    while (constructs > 0) {
        LineStart after;
        const bool isRead = parseLine(before, after) && line_.ends <= constructs + (line_.isStart() ? 1 : 0) &&
                            (!line_.isObject() || take(line_, skimmed.depth));
        if (!isRead) {
            break;
        }
        takeLine(after);
        skimmed.properties += line_.key.empty() ? 0 : 1;
        constructs += line_.isStart() ? 1 : 0;
        constructs -= line_.ends;
        skimmed.isAtEnd = constructs == 0;
        skimmed.depth += line_.isObject() ? 1 : 0;
        for (std::uint64_t ends = line_.objectEnds; ends != 0 && skimmed.depth > 0; ends &= ends - 1) {
            --skimmed.depth;
        }
    }
    return skimmed;
}

// Parses the next line, if there is one that begins after the last event, and changes nothing but `line_`.
inline bool Reader::parseLine(std::uint64_t before, LineStart& after) {
    if (inLines_ ? !keepLine() : !findLine()) {
        return false;
    }
    const LineStart start = nextLine_;
    const std::uint64_t offset = window_.offsetOf(start.token);
    line_.place = {offset, start.number, offset - start.offset + 1};
    const char* ends = LineParser(start.token, line_).parse(nesting_.isWithin(Construct::list));
    if (ends == nullptr) {
        return false;
    }
    const char* at = ends;
    while (*at == ')') {
        ++at;
    }
    line_.endsBegin = offset + static_cast<std::uint64_t>(ends - start.token);
    line_.ends = static_cast<std::uint32_t>(at - ends);
    after.end = at;
    after.endNumber = start.number;
    after.endOffset = start.offset;
    after.begin = LineParser::endLine(at);
    after.number = start.number + 1;
    if (after.begin == nullptr || findNext(after, line_.isObject() && line_.ends == 0) == nullptr) {
        return false;
    }
    after.offset = window_.offsetOf(after.begin);
    line_.next = after.offset + static_cast<std::uint64_t>(after.token - after.begin);
    return line_.next <= before && line_.next - offset <= settings_.longestName && hasPlace();
}

// Whether the next token, or the current one if it has not been processed, is the first on its line, within a
// construct of which lines are read.
bool Reader::findLine() {
    const bool isBetween = damages_.empty() && ends_ == 0 && !reopens_ && !held_ && !isKeyed_;
    return isBetween && !nesting_.isEmpty() && nesting_.innermost().construct <= Construct::list &&
           lexer_.findLine(consumes_, nextLine_);
}

// Has the next line in memory, if it is not very long.
inline bool Reader::keepLine() {
    if (window_.limit() - nextLine_.begin < usualLine && !isAtEnd_) {
        const char* const kept = nextLine_.end;
        const std::ptrdiff_t begin = nextLine_.begin - kept;
        const std::ptrdiff_t token = nextLine_.token - kept;
        isAtEnd_ = !window_.refill(kept) && !window_.isFull(window_.begin());
        nextLine_.end = window_.begin();
        nextLine_.begin = nextLine_.end + begin;
        nextLine_.token = nextLine_.end + token;
    }
    return !nesting_.isEmpty() && nesting_.innermost().construct <= Construct::list;
}

// Whether the constructs of the line can begin and end here.
inline bool Reader::hasPlace() const {
    const std::size_t depth = nesting_.depth() + (line_.isStart() ? 1 : 0);
    return line_.ends <= Line::mostEnds && line_.ends <= depth && depth <= settings_.deepest;
}

inline void Reader::takeLine(const LineStart& after) {
    if (line_.isStart()) {
        nesting_.push({line_.valuePlace(), indentOf(nextLine_), line_.construct});
        straying_ = false;
    }
    line_.objectEnds = 0;
    for (std::uint64_t end = 0; end < line_.ends; ++end) {
        line_.objectEnds |= nesting_.isWithin(Construct::object) ? std::uint64_t{1} << end : 0;
        nesting_.pop();
    }
    nextLine_ = after;
    inLines_ = true;
}

void Reader::leaveLines() {
    if (std::exchange(inLines_, false)) {
        lexer_.goOn(nextLine_);
        consumes_ = true;
        continuing_ = false;
    }
}

} // namespace notation
