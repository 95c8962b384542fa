#include "scanner/ValueReaders.h"

#include "scanner/InputLayer.h"

#include <algorithm>
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

namespace {

/// Consumes the next two bytes if they are a newline and a "|".
bool enterTextLine() {
    const int newline = yyinput();
    if (newline == '\n') {
        const int bar = yyinput();
        if (bar == '|') {
            return true;
        }
        if (bar >= 0) {
            yyunput(bar, yytext);
        }
    }
    if (newline >= 0) {
        yyunput(newline, yytext);
    }
    return false;
}

/// Consumes the rest of the line up to its newline and appends as much as fits to `text`.
void takeLine(Value& text, std::size_t& room) {
    while (scannerInput.fill()) {
        const std::string_view rest = scannerInput.unread();
        const std::size_t length = std::min(rest.find('\n'), rest.size());
        const std::size_t kept = std::min(length, room);
        text.append(rest.substr(0, kept));
        text.leaveOut(length - kept);
        room -= kept;
        scannerInput.moveCursor(scannerInput.cursor() + length);
        if (length < rest.size()) {
            return;
        }
    }
}

} // namespace

Value getMultiLine() {
    if (!enterTextLine()) {
        return {};
    }
    std::size_t room = longestMultiLine;
    Value text(room);
    takeLine(text, room);
    while (enterTextLine()) {
        if (room > 0) {
            text.append("\n");
            --room;
        } else {
            text.leaveOut(1);
        }
        takeLine(text, room);
    }
    return text;
}

} // namespace rose
