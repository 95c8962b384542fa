#include "NotationEvents.h"

namespace notation::test {

namespace {

constexpr const char* constructs[] = {"object", "list", "value", "group"};
constexpr const char* kinds[] = {"",          "",         "text", "line", "integer", "real",
                                 "reference", "location", "flag", "word", "nothing", ""};

std::string startText(const Event& event) {
    std::string text = "<";
    text += constructs[static_cast<std::size_t>(event.construct)];
    text += event.text.empty() ? "" : " " + std::string(event.text);
    for (const Name& name : event.names) {
        text += " '" + std::string(name.text) + "'";
    }
    return text + (event.reference.empty() ? "" : " @" + std::string(event.reference)) + (event.isImplied ? "?" : "");
}

} // namespace

std::string wordsOf(const Event& event) {
    const std::string key = event.isProperty() ? std::string(event.key) + "=" : "";
    switch (event.kind) {
    case EventKind::start:
        return key + startText(event);
    case EventKind::end:
        return event.isImplied ? ">?" : ">";
    case EventKind::damage:
        return std::string("!") + damageWord(event.damage->kind);
    case EventKind::location:
        return key + "location:" + std::string(event.text) + "," + std::string(event.y);
    default:
        return key + kinds[static_cast<std::size_t>(event.kind)] + ":" + std::string(event.text);
    }
}

std::string eventsOf(std::string_view text, const Reader::Settings& settings, std::size_t blockSize) {
    MemorySource source(text, blockSize);
    Reader reader(source, settings);
    std::string words;
    while (reader.next()) {
        const Event& event = reader.event();
        if (event.continues) {
            words += (event.startsLine ? "/" : "") + std::string(event.text);
        } else {
            words += (words.empty() ? "" : " ") + wordsOf(event);
        }
    }
    return words;
}

std::vector<std::string> damagesOf(std::string_view text) {
    MemorySource source(text);
    Reader reader(source);
    std::vector<std::string> damages;
    while (reader.next()) {
        if (reader.event().kind == EventKind::damage) {
            const Damage& damage = *reader.event().damage;
            damages.push_back(std::to_string(damage.place.line) + ":" + std::to_string(damage.place.column) + " " +
                              damageWord(damage.kind));
        }
    }
    return damages;
}

} // namespace notation::test
