// The judge of the matcher: written for obviousness, from the meaning of the patterns alone.

#include "MatchEvent.h"
#include "scanner/RuleTable.h"

#include <algorithm>

namespace rose::test {

namespace {

/// A place in the text, or that there is no match.
constexpr std::size_t none = std::string_view::npos;

constexpr std::string_view blanks = " \t";
constexpr std::string_view spaces = " ";

class SimpleMatcher {
public:
    explicit SimpleMatcher(std::string_view text)
        : text_(text), blanks_(runEnds(text, blanks)), spaces_(runEnds(text, spaces)) {}

    MatchEvents run() {
        MatchEvents events;
        for (std::size_t place = 0; place < text_.size();) {
            std::size_t best = place;
            int rule = 0;
            for (const Pattern& pattern : patterns) {
                // No lead goes further than to the first byte that is not a blank. Looked at first to save time.
                const bool mayMatch = is(blanks_[place], pattern.literal.first.substr(0, 1));
                const std::size_t end = mayMatch ? match(pattern, place) : none;
                if (end != none && end > best) {
                    best = end;
                    rule = pattern.number;
                }
            }
            if (rule == 0) {
                ++place;
                continue;
            }
            events.push_back({rule, std::string(text_.substr(place, best - place))});
            place = best;
            if (readsLines(rule, events.back().bytes)) {
                events.back().lines = linesBehind(text_, place);
            }
        }
        return events;
    }

private:
    bool is(std::size_t place, std::string_view bytes) const {
        return place < text_.size() && bytes.find(text_[place]) != std::string_view::npos;
    }

    /// For every place where the run of `bytes` that starts there ends.
    static std::vector<std::size_t> runEnds(std::string_view text, std::string_view bytes) {
        std::vector<std::size_t> ends(text.size() + 1, text.size());
        for (std::size_t place = text.size(); place-- > 0;) {
            ends[place] = bytes.find(text[place]) == std::string_view::npos ? place : ends[place + 1];
        }
        return ends;
    }

    std::size_t all(std::size_t place, std::string_view bytes) const {
        return bytes == blanks ? blanks_[place] : spaces_[place];
    }

    std::size_t allBut(std::size_t place, std::string_view bytes) const {
        while (place < text_.size() && !is(place, bytes)) {
            ++place;
        }
        return place;
    }

    std::size_t oneOrMore(std::size_t place, std::string_view bytes) const {
        return is(place, bytes) ? all(place, bytes) : none;
    }

    std::size_t optional(std::size_t place, std::string_view bytes) const {
        return is(place, bytes) ? place + 1 : place;
    }

    std::size_t word(std::size_t place, std::string_view word) const {
        return text_.substr(place, word.size()) == word ? place + word.size() : none;
    }

    std::size_t lead(Lead lead, std::size_t place) const {
        switch (lead) {
        case Lead::noLead:
            return place;
        case Lead::oneBlank:
            return is(place, blanks) ? place + 1 : none;
        case Lead::blanks:
            return oneOrMore(place, blanks);
        case Lead::optionalBlanks:
            return all(place, blanks);
        case Lead::optionalSpaces:
            return all(place, spaces);
        }
        return none;
    }

    std::size_t quotedRun(std::size_t place, std::string_view stops) const {
        return place == none ? none : allBut(optional(place, "\""), stops);
    }

    std::size_t view(std::size_t place) const {
        const std::size_t open = oneOrMore(place, blanks);
        if (open == none || !is(open, "\"")) {
            return none;
        }
        const std::size_t close = allBut(open + 1, "\"");
        const std::size_t name = is(close, "\"") ? oneOrMore(close + 1, blanks) : none;
        const std::size_t end = quotedRun(name, "\"");
        return end != none && is(end, "\"") ? allBut(end, "\n") : end;
    }

    std::size_t tail(Tail tail, std::size_t place) const {
        switch (tail) {
        case Tail::noTail:
            return place;
        case Tail::valueTail:
            return quotedRun(oneOrMore(place, blanks), "\"\n");
        case Tail::flagTail:
            return quotedRun(oneOrMore(place, blanks), "\")\n");
        case Tail::looseTail:
            return quotedRun(all(place, blanks), "\"\n");
        case Tail::spaceTail:
            return quotedRun(oneOrMore(place, spaces), "\"\n");
        case Tail::lineTail:
            return allBut(place, "\n");
        case Tail::viewTail:
            return view(place);
        }
        return none;
    }

    std::size_t match(const Pattern& pattern, std::size_t place) const {
        place = lead(pattern.lead, place);
        place = place == none ? none : word(place, pattern.literal.first);
        if (place != none && !pattern.literal.second.empty()) {
            place = word(all(place, blanks), pattern.literal.second);
        }
        return place == none ? none : tail(pattern.tail, place);
    }

    std::string_view text_;
    std::vector<std::size_t> blanks_;
    std::vector<std::size_t> spaces_;
};

} // namespace

std::string linesBehind(std::string_view text, std::size_t& place) {
    std::string lines;
    for (std::string_view joint; text.substr(place, 2) == "\n|"; joint = "\n") {
        const std::size_t end = std::min(text.find('\n', place + 2), text.size());
        lines.append(joint).append(text.substr(place + 2, end - place - 2));
        place = end;
    }
    return lines.substr(0, 9999).c_str();
}

MatchEvents simpleEvents(std::string_view text) {
    return SimpleMatcher(text).run();
}

} // namespace rose::test
