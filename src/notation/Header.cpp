#include "notation/Header.h"

#include <charconv>

namespace notation {

namespace {

constexpr std::string_view headerKind = "Petal";

std::optional<std::int64_t> numberOf(const Event& event) {
    std::int64_t number = 0;
    const char* end = event.text.data() + event.text.size();
    const auto [stop, error] = std::from_chars(event.text.data(), end, number);
    const bool isNumber = event.kind == EventKind::integer && error == std::errc() && stop == end;
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace

bool HeaderGatherer::takeEarly(const Event& event) {
    if (part_ == Part::within) {
        if (event.kind == EventKind::end && event.depth == 0) {
            header_.isClosed = !event.isImplied;
            part_ = Part::after;
        } else if (event.depth == 1) {
            takeProperty(event);
        }
    } else if (event.kind == EventKind::start) {
        header_.isModel = event.construct == Construct::object && event.text == headerKind;
        part_ = header_.isModel ? Part::within : Part::after;
        return header_.isModel;
    }
    return true;
}

void HeaderGatherer::takeProperty(const Event& event) {
    if (event.continues) {
        if (inWritten_) {
            header_.written += event.startsLine ? "\n" : "";
            header_.written += event.text;
        }
        return;
    }
    if (!event.isProperty()) {
        return; // such as a value without a key
    }
    inWritten_ = event.key == "_written" && (event.kind == EventKind::text || event.kind == EventKind::line);
    if (inWritten_) {
        header_.written = event.text;
    } else if (event.key == "version") {
        header_.version = numberOf(event);
    } else if (event.key == "charSet") {
        header_.charSet = numberOf(event);
    }
}

} // namespace notation
