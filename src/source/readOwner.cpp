#include "source/readOwner.h"

#include "notation/ReaderLines.h"

#include <utility>
#include <vector>

namespace source {

namespace {

using notation::Construct;
using notation::EventKind;

/// A text from an object on, after an LF, which tells how lines end.
class LocalSource final : public notation::ByteSource {
public:
    explicit LocalSource(notation::ByteSource& text) : text_(text) {}
    std::size_t read(char* target, std::size_t size) override {
        return std::exchange(hasBegun_, true) ? text_.read(target, size) : (*target = '\n', 1);
    }

private:
    notation::ByteSource& text_;
    bool hasBegun_ = false;
};

struct Open {
    std::uint64_t begin;
    std::uint64_t headEnd;
    Construct construct;
};

/// The constructs that have begun and not ended. Offsets are those of the local source.
class OpenConstructs {
public:
    OpenConstructs() { open_.reserve(usualDepth); }

    [[nodiscard]] bool isEmpty() const { return open_.empty(); }
    [[nodiscard]] std::size_t depth() const { return open_.size(); }
    [[nodiscard]] bool isInObject() const { return !isEmpty() && innermost().construct == Construct::object; }
    [[nodiscard]] const Open& innermost() const { return open_.back(); }

    /// A property, or an object without a name before it, begins.
    void endHead(std::uint64_t begin) {
        if (std::exchange(isInHead_, false)) {
            open_.back().headEnd = begin;
        }
    }
    void start(std::uint64_t begin, Construct construct) {
        open_.push_back({begin, 0, construct});
        isInHead_ = construct == Construct::object;
    }
    void end(std::size_t count) {
        open_.resize(open_.size() - count);
        isInHead_ = isInHead_ && count == 0;
    }

private:
    static constexpr std::size_t usualDepth = 16;

    std::vector<Open> open_;
    bool isInHead_ = false; // of the innermost construct, an object
};

void take(const notation::Line& line, OpenConstructs& open) {
    if (!line.key.empty() || line.isObject()) {
        open.endHead(line.place.offset);
    }
    if (line.isStart()) {
        open.start(line.valueBegin, line.construct);
    }
    open.end(line.ends);
}

void take(const notation::Event& event, OpenConstructs& open) {
    if (event.kind == EventKind::start) {
        open.start(event.place.offset, event.construct);
    } else if (event.kind == EventKind::end) {
        open.end(1);
    }
}

notation::Reader::Settings settingsFor(std::size_t window) {
    notation::Reader::Settings settings;
    settings.window = window;
    return settings;
}

/// Passes a property of an object that is in one of the most usual forms, and returns the token of the next line; null
/// for any other line. `end` receives the first of the parentheses at the end of the line.
const char* passProperty(const char* token, const char*& end) {
    end = notation::LineParser::passScalar(token, notation::LineParser::Glance(token));
    if (end == nullptr) {
        return nullptr;
    }
    const char* const lineEnd = notation::endOfEnds(end);
    return *lineEnd == '\n' ? notation::runs::endOfBlanks(lineEnd + 1) : nullptr;
}

} // namespace

std::optional<QuidOwner> readUsualOwner(const char* text, std::uint64_t object, std::uint64_t quid) {
    using Reading = QuidOwner::Reading;
    const char* const last = text + (quid - object);
    const auto offsetOf = [&](const char* at) { return object + static_cast<std::uint64_t>(at - text); };
    OpenConstructs open;
    notation::Line line;
    notation::LineStart next{.token = text};
    do {
        const char* ends = nullptr;
        const char* after = open.isInObject() && next.token < last ? passProperty(next.token, ends) : nullptr;
        if (after != nullptr && notation::beginsLine(*after)) {
            const auto count = static_cast<std::size_t>(notation::endOfEnds(ends) - ends);
            if (count > open.depth()) {
                return std::nullopt;
            }
            open.endHead(offsetOf(next.token));
            open.end(count);
            next.token = after;
            continue;
        }
        notation::LineParser parser(next.token, line);
        ends = parser.parse(!open.isInObject());
        if (ends == nullptr) {
            return std::nullopt;
        }
        if (next.token >= last) {
            if (next.token != last || !open.isInObject() || line.kind != EventKind::text) {
                return std::nullopt;
            }
            open.endHead(quid);
            return QuidOwner{Reading::quid, open.innermost().begin, open.innermost().headEnd};
        }
        const char* const end = notation::endOfEnds(ends);
        line.place.offset = offsetOf(next.token);
        line.valueBegin = offsetOf(parser.value());
        line.ends = static_cast<std::uint32_t>(end - ends);
        next.begin = notation::endOfLine(end);
        if (line.ends > open.depth() + (line.isStart() ? 1 : 0) || next.begin == nullptr ||
            !notation::findToken(next, line.isObject() && line.ends == 0)) {
            return std::nullopt;
        }
        take(line, open);
    } while (!open.isEmpty());
    return QuidOwner{.reading = Reading::ended};
}

QuidOwner readOwner(notation::ByteSource& text, std::uint64_t object, std::uint64_t quid, std::size_t window) {
    using Reading = QuidOwner::Reading;
    const std::uint64_t local = 1 - object; // wraps; to be added to an offset in the file
    const std::uint64_t end = quid + local;
    LocalSource source(text);
    notation::Reader reader(source, settingsFor(window));
    OpenConstructs open;
    do {
        if (const notation::Line* line = reader.nextLine(end)) { // nearly all
            take(*line, open);
            continue;
        }
        if (!reader.next() || reader.event().kind == EventKind::damage) {
            return {.reading = Reading::damage};
        }
        const notation::Event& event = reader.event();
        const bool isObject = event.kind == EventKind::start && event.construct == Construct::object;
        if (event.isProperty() || isObject) {
            const std::uint64_t begin = (event.isProperty() ? event.keyPlace : event.place).offset;
            open.endHead(begin);
            if (begin >= end && !open.isEmpty()) {
                const bool isQuid = begin == end && event.kind == EventKind::text;
                return {isQuid ? Reading::quid : Reading::noQuid, open.innermost().begin - local,
                        open.innermost().headEnd - local};
            }
        }
        take(event, open);
    } while (!open.isEmpty());
    return {.reading = Reading::ended};
}

std::optional<QuidOwner> skimOwner(notation::ByteSource& text, std::uint64_t object, std::uint64_t quid,
                                   std::size_t window) {
    using Reading = QuidOwner::Reading;
    const std::uint64_t local = 1 - object; // wraps, as above
    LocalSource source(text);
    notation::Reader reader(source, settingsFor(window));
    const bool isObject = reader.next() && reader.event().kind == EventKind::start &&
                          reader.event().construct == Construct::object && !reader.event().isProperty();
    if (!isObject) {
        return std::nullopt;
    }
    const notation::Line* first = reader.nextLine(quid + local);
    if (first == nullptr || first->key.empty() || first->ends > 1 || (first->ends == 1 && !first->isStart()) ||
        first->isObject()) {
        return std::nullopt;
    }
    const std::uint64_t headEnd = first->place.offset;
    const notation::Skimmed skimmed =
        reader.skim(quid + local, [](std::string_view, const notation::Place&, std::size_t) { return true; }, {});
    if (skimmed.isAtEnd) {
        return QuidOwner{.reading = Reading::ended};
    }
    const bool isQuid = reader.next() && reader.event().kind == EventKind::text && reader.event().depth == 1 &&
                        reader.event().keyPlace.offset == quid + local;
    return isQuid ? std::optional(QuidOwner{Reading::quid, object, headEnd - local}) : std::nullopt;
}

} // namespace source
