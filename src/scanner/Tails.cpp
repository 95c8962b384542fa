#include "scanner/Tails.h"

#include "scanner/ByteRuns.h"

#include <array>
#include <cstddef>

namespace rose {

namespace {

/// The tails that are blanks, an optional quote and a run.
struct RunTail {
    bool blanksNeeded;
    char otherBlank; // counts as a blank besides the space
    char otherStop;  // stops the run besides the quote and the newline
};

/// In the order of `Tail`, of which these are the first.
constexpr std::array<RunTail, 4> runTails{{
    {true, '\t', '"'}, // valueTail
    {true, '\t', ')'}, // flagTail
    {false, '\t', '"'}, // looseTail
    {true, ' ', '"'}, // spaceTail
}};

/// What a search says that found its text unfinished at the window's limit.
const char* unfinished(const Window& window) { return window.ended ? nullptr : window.limit; }

const char* runTailEnd(const RunTail& tail, const char* text, const Window& window) {
    const char* const blanksEnd = bytes::afterBlanks(text, tail.otherBlank);
    if (tail.blanksNeeded && blanksEnd == text) {
        return text < window.limit ? nullptr : unfinished(window);
    }
    // The byte at the limit is NUL.
    return bytes::firstStop(blanksEnd + (*blanksEnd == '"' ? 1 : 0), window.limit, '"', '\n', tail.otherStop);
}

const char* quoteEnd(const char* text, const Window& window) {
    return bytes::firstStop(text, window.limit, '"', '"', '"');
}

const char* lineEnd(const char* text, const Window& window) {
    return bytes::firstStop(text, window.limit, '\n', '\n', '\n');
}

const char* viewTailEnd(const char* text, const Window& window) {
    const char* const kindStart = bytes::afterBlanks(text, '\t');
    if (kindStart == window.limit) {
        return unfinished(window);
    }
    if (kindStart == text || *kindStart != '"') {
        return nullptr;
    }
    const char* const kindEnd = quoteEnd(kindStart + 1, window);
    if (kindEnd == window.limit) {
        return unfinished(window);
    }
    const char* const nameStart = bytes::afterBlanks(kindEnd + 1, '\t');
    if (nameStart == kindEnd + 1) {
        return nameStart < window.limit ? nullptr : unfinished(window);
    }
    const char* const nameEnd = quoteEnd(nameStart + (*nameStart == '"' ? 1 : 0), window);
    return nameEnd < window.limit ? lineEnd(nameEnd + 1, window) : nameEnd;
}

} // namespace

const char* tailEnd(Tail tail, const char* text, const Window& window) {
    switch (tail) {
    case Tail::noTail:
        return text;
    case Tail::lineTail:
        return lineEnd(text, window);
    case Tail::viewTail:
        return viewTailEnd(text, window);
    default:
        return runTailEnd(runTails[static_cast<std::size_t>(tail)], text, window);
    }
}

const char* secondLiteralEnd(const Literal& literal, const char* text, const Window& window) {
    const char* const start = bytes::afterBlanks(text, '\t');
    const std::size_t length = literal.second.size();
    if (static_cast<std::size_t>(window.limit - start) < length) {
        return unfinished(window);
    }
    return std::string_view(start, length) == literal.second ? start + length : nullptr;
}

} // namespace rose
