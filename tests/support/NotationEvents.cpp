#include "NotationEvents.h"

#include <algorithm>

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

std::string placeText(const Place& place) {
    return std::to_string(place.offset) + ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
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

std::string detailsOf(std::string_view text, const Reader::Settings& settings) {
    MemorySource source(text);
    Reader reader(source, settings);
    std::string details;
    while (reader.next()) {
        const Event& event = reader.event();
        for (const unsigned part : {static_cast<unsigned>(event.kind), static_cast<unsigned>(event.construct),
                                    event.continues ? 1U : 0, event.startsLine ? 1U : 0, event.isImplied ? 1U : 0}) {
            details += std::to_string(part) + " ";
        }
        details += std::to_string(event.depth) + " key " + placeText(event.keyPlace) + std::string(event.key);
        details += " at " + placeText(event.place) + "-" + std::to_string(event.end) + " " + std::string(event.text);
        details += " y " + std::string(event.y) + " @" + std::string(event.reference);
        for (const Name& name : event.names) {
            details += " name " + std::to_string(name.offset) + "+" + std::to_string(name.length) +
                       (name.hasEscapes ? "\"" : "|") + std::string(name.text);
        }
        if (event.damage != nullptr) {
            details += std::string(" ") + damageWord(event.damage->kind) + placeText(event.damage->place) + " opened " +
                       placeText(event.damage->opened) + " " + std::to_string(event.damage->count);
        }
        details += "\n";
    }
    return details;
}

std::string slowDifference(std::string_view text, Reader::Settings settings) {
    settings.isFast = true;
    const std::string fast = detailsOf(text, settings);
    settings.isFast = false;
    const std::string slow = detailsOf(text, settings);
    if (fast == slow) {
        return "";
    }
    const auto at = static_cast<std::size_t>(std::ranges::mismatch(fast, slow).in2 - slow.begin());
    const std::size_t begin = slow.rfind('\n', at) + 1;
    return slow.substr(begin, slow.find('\n', at) - begin) + "\n";
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
