#include "InputText.h"
#include "MatchEvent.h"
#include "scanner/Matcher.h"
#include "scanner/ValueReaders.h"

#include <cstdio>

namespace rose::test {

MatchEvents matcherEvents(std::string_view text, std::size_t bufferSize, std::size_t readSize, const VectorCode& code) {
    const InputText input(text, {.bufferSize = bufferSize, .readSize = readSize});
    MatchEvents events;
    const auto record = [&](int rule, const char* match, std::size_t length) {
        MatchEvent event{rule, std::string(match, length)};
        if (readsLines(rule, event.bytes)) {
            const Value lines = getMultiLine();
            event.lines = lines ? lines.text() : "";
        }
        // The match outlives what is read behind it.
        event.bytes.assign(yytext, yyleng);
        events.push_back(std::move(event));
    };
    scan(scannerInput, record, code);
    return events;
}

std::string readable(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        char escaped[8];
        const bool plain = byte >= ' ' && byte <= '~' && byte != '\\';
        std::snprintf(escaped, sizeof escaped, plain ? "%c" : "\\x%02X", static_cast<unsigned char>(byte));
        text += escaped;
    }
    return text;
}

} // namespace rose::test
