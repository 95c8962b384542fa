#include "scanner/Tails.h"

#include <cstddef>

namespace rose {

namespace {

const char* viewTailEnd(const char* text, const Window& window) {
    const char* const kindStart = bytes::afterBlanks(text, '\t');
    if (kindStart == window.limit) {
        return unfinished(window);
    }
    if (kindStart == text || *kindStart != '"') {
        return nullptr;
    }
    const char* const kindEnd = bytes::first('"', kindStart + 1, window.limit);
    if (kindEnd == window.limit) {
        return unfinished(window);
    }
    const char* const nameStart = bytes::afterBlanks(kindEnd + 1, '\t');
    if (nameStart == kindEnd + 1) {
        return nameStart < window.limit ? nullptr : unfinished(window);
    }
    const char* const nameEnd = bytes::first('"', nameStart + (*nameStart == '"' ? 1 : 0), window.limit);
    return nameEnd < window.limit ? bytes::first('\n', nameEnd + 1, window.limit) : nameEnd;
}

} // namespace

const char* tailEnd(Tail tail, const char* text, const Window& window) {
    switch (tail) {
    case Tail::valueTail:
        return runTailEnd<>(true, '\t', text, window);
    case Tail::flagTail:
        return runTailEnd<')'>(true, '\t', text, window);
    case Tail::looseTail:
        return runTailEnd<>(false, '\t', text, window);
    case Tail::spaceTail:
        return runTailEnd<>(true, ' ', text, window);
    case Tail::noTail:
        return text;
    case Tail::lineTail:
        return bytes::first('\n', text, window.limit);
    case Tail::viewTail:
        return viewTailEnd(text, window);
    }
    return nullptr;
}

const char* secondPartEnd(std::string_view secondPart, const char* text, const Window& window) {
    const char* const start = bytes::afterBlanks(text, '\t');
    const std::size_t length = secondPart.size();
    if (static_cast<std::size_t>(window.limit - start) < length) {
        return unfinished(window);
    }
    return std::string_view(start, length) == secondPart ? start + length : nullptr;
}

} // namespace rose
