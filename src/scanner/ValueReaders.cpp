#include "scanner/ValueReaders.h"

#include <cstdlib>
#include <cstring>

namespace rose {

namespace {

constexpr char referenceMark = '@';

} // namespace

Value getValue(const char* text, char delimiter) {
    const char* const last = std::strrchr(text, delimiter);
    return last != nullptr ? Value(std::string_view(last + 1)) : Value();
}

Value getValue3(const char* text, char delimiter) {
    if (Value quoted = getValue(text, delimiter)) {
        return quoted;
    }
    const char* const mark = std::strrchr(text, referenceMark);
    if (mark == nullptr) {
        return {};
    }
    const std::string_view number(mark + 1);
    Value reference(number.size() + 1);
    reference.append(number);
    reference.append("\t");
    return reference;
}

Value getValue4(const char* text, char delimiter) {
    return getValue3(text, delimiter);
}

Value getValue5(const char* text, char delimiter, long* viewNumber) {
    const char* from = text;
    const char* open = nullptr; // the third delimiter
    for (int count = 0; count < 3; ++count) {
        open = std::strchr(from, delimiter);
        if (open == nullptr) {
            return {};
        }
        from = open + 1;
    }
    const char* const close = std::strchr(from, delimiter);
    if (close == nullptr) {
        return {};
    }
    if (const char* const mark = std::strrchr(text, referenceMark)) {
        *viewNumber = std::strtol(mark + 1, nullptr, 10);
    }
    return Value(std::string_view(from, static_cast<std::size_t>(close - from)));
}

} // namespace rose
