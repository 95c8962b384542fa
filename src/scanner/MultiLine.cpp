#include "scanner/MultiLine.h"

#include "scanner/InputLayer.h"

#include <algorithm>
#include <cstring>

namespace rose {

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

/// Consumes the rest of the line up to its newline and gives what fits to `text`.
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
