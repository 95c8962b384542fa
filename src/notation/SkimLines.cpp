// Skims lines: reads them as `nextLine` does, but keeps only counts. Most of a file is skimmed when an import is summed
// up, so a line must cost little here: the most usual ones are passed without even making a `Line`, and the contents of
// an object that are written byte for byte as those of an earlier one at once, such as those of most fonts.

#include "notation/ReaderLines.h"

#include <algorithm>
#include <cstring>

namespace notation {

class Reader::Skimming {
public:
    Skimming(Reader& reader, std::uint64_t before, const TakeObject& takeObject, const TakeProperty& takeProperty)
        : reader_(reader), before_(before), takeObject_(takeObject), takeProperty_(takeProperty),
          takesObjects_(takeObject != nullptr), takesAll_(takeProperty == nullptr),
          constructs_(reader.nesting_.depthInObject()) {}

    Skimmed skim() {
        while (constructs_ > 0 && reader_.hasLine() && here() < before_ && skimMemory()) {
        }
        return skimmed_;
    }

private:
    [[nodiscard]] std::uint64_t here() const { return reader_.window_.offsetOf(reader_.nextLine_.token); }

    // Passes lines that are in memory, one at least; returns false before one that is not to be passed.
    bool skimMemory() {
        const char* const last = lastToken();
        LineStart here = reader_.nextLine_;
        bool isPassed = true;
        within_ = reader_.nesting_.innermost().construct;
        do {
            isPassed = !reader_.inLines_ || passScalars(here, last);
            if (isPassed && within_ <= Construct::list) {
                isPassed = pass(here, last);
            }
        } while (isPassed && within_ <= Construct::list && reader_.isInMemory(here));
        reader_.nextLine_ = here;
        return isPassed;
    }

    // Passes a line; returns false if it is not to be passed.
    bool pass(LineStart& here, const char* last) {
        if (here.token >= last) {
            return false;
        }
        LineStart after;
        LineStart textEnd;
        const LineStart* lastLine = &here;
        LineParser parser(here.token, line_);
        const char* ends = parser.parse(within_ == Construct::list);
        if (ends == nullptr && !line_.key.empty()) {
            textEnd = here;
            ends = passText(parser.value(), textEnd);
            lastLine = &textEnd;
        }
        const char* const end = ends != nullptr ? endOfEnds(ends) : nullptr;
        if (end == nullptr || !reader_.findAfter(end, line_.isObject() && end == ends, *lastLine, after) ||
            after.token > last) {
            return false;
        }
        const auto count = static_cast<std::size_t>(end - ends);
        const bool isPassed = count <= constructs_ + (line_.isStart() ? 1 : 0) &&
                              (line_.isStart() ? begin(parser.value(), here)
                                               : line_.key.empty() || takesAll_ ||
                                                     takeProperty_(line_.key, reader_.placeOf(here.token, here)));
        if (!isPassed) {
            return false;
        }
        endConstructs(count);
        skimmed_.properties += line_.key.empty() ? 0 : 1;
        reader_.inLines_ = true;
        here = after;
        return true;
    }

    // Passes properties of an object that are in one of the most usual forms, as long as there are such; returns false
    // before one that is not to be passed.
    bool passScalars(LineStart& here, const char* last) {
        using Glance = LineParser::Glance;
        const std::ptrdiff_t reserve = reader_.isAtEnd_ ? std::ptrdiff_t{Glance::size} : usualLine;
        Block* block = takesAll_ ? &blockAt(here) : nullptr;
        const char* lineOfEnd = block != nullptr ? passBlock(*block, here, last) : nullptr;
        if (lineOfEnd != nullptr) {
            block = nullptr;
        }
        const char* const begin = here.begin;
        const std::uint64_t number = here.number;
        bool isPassed = true;
        while (within_ == Construct::object && here.token < last && reader_.window_.limit() - here.token >= reserve) {
            const Glance glance(here.token);
            const Passed line = passScalar(here.token, glance);
            const auto count = static_cast<std::size_t>(line.end - line.ends);
            if (line.end == nullptr || !beginsLine(*line.next) || line.next > last || count > constructs_) {
                break;
            }
            isPassed = takesAll_ || takeProperty_({here.token, glance.keyEnd}, placeOf(here));
            if (!isPassed) {
                break;
            }
            endConstructs(count);
            ++skimmed_.properties;
            lineOfEnd = here.begin;
            here.end = line.end;
            here.begin = line.end + 1;
            here.token = line.next;
            ++here.number;
            if (block != nullptr && count > 0) {
                *block = {.begin = reader_.window_.offsetOf(begin),
                          .size = static_cast<std::size_t>(here.begin - begin),
                          .lastLine = lineOfEnd - begin,
                          .lines = here.number - number,
                          .ends = count};
                block = nullptr;
            }
        }
        if (lineOfEnd != nullptr) {
            here.offset = reader_.window_.offsetOf(here.begin);
            here.endOffset = reader_.window_.offsetOf(lineOfEnd);
            here.endNumber = here.number - 1;
        }
        return isPassed;
    }

    // The last block that began like the line, perhaps.
    [[nodiscard]] Block& blockAt(const LineStart& line) const {
        const auto blanks = static_cast<std::size_t>(line.token - line.begin);
        return reader_
            .blocks_[(blanks + std::size_t{5} * static_cast<unsigned char>(*line.token)) % reader_.blocks_.size()];
    }

    // Passes the lines if they are those of the block, which must be in memory still, and returns the last one of them;
    // null if they are not.
    const char* passBlock(const Block& block, LineStart& here, const char* last) {
        const InputWindow& window = reader_.window_;
        const std::uint64_t origin = window.offsetOf(window.begin());
        const bool isInMemory = block.size > 0 && block.begin >= origin &&
                                static_cast<std::size_t>(window.limit() - here.begin) > block.size;
        if (within_ != Construct::object || block.ends > constructs_ || !isInMemory ||
            std::memcmp(here.begin, window.begin() + (block.begin - origin), block.size) != 0) {
            return nullptr;
        }
        const char* const after = here.begin + block.size;
        const char* const next = runs::endOfBlanks(after);
        if (!beginsLine(*next) || next > last) {
            return nullptr;
        }
        endConstructs(block.ends);
        skimmed_.properties += block.lines;
        const char* const lastLine = here.begin + block.lastLine;
        here.end = after - 1;
        here.begin = after;
        here.token = next;
        here.number += block.lines;
        return lastLine;
    }

    /// A line with a property that was passed.
    struct Passed {
        const char* ends = nullptr; ///< of constructs
        const char* end = nullptr;  ///< the line feed; null if the line is not usual
        const char* next = nullptr; ///< the token after it
    };

    // The end of a line that is short is looked for at once: the processor goes on there while it takes the line apart.
    static Passed passScalar(const char* at, const LineParser::Glance& glance) {
        Passed line;
        const bool isShort = glance.lineEnds != 0;
        if (isShort) {
            line.end = at + std::countr_zero(glance.lineEnds);
            line.next = runs::endOfBlanks(line.end + 1);
        }
        line.ends = LineParser::passScalar(at, glance);
        if (line.ends == nullptr) {
            return {};
        }
        const char* const end = endOfEnds(line.ends);
        if (!isShort) {
            line.end = end;
            line.next = runs::endOfBlanks(end + 1);
        }
        return *end == '\n' && line.end == end ? line : Passed();
    }

    // The place of the token of a line that follows another one in memory.
    [[nodiscard]] Place placeOf(const LineStart& line) const {
        return {reader_.window_.offsetOf(line.token), line.number,
                static_cast<std::uint64_t>(line.token - line.begin) + 1};
    }

    // The last place in memory where the token after a line may be.
    [[nodiscard]] const char* lastToken() const {
        const InputWindow& window = reader_.window_;
        const std::uint64_t begin = window.offsetOf(window.begin());
        const std::uint64_t size = window.offsetOf(window.limit()) - begin;
        return window.begin() + std::min(before_ - std::min(before_, begin), size);
    }

    // Passes the "|" lines after a key, if they are the next ones and in memory. Returns the end of the last one and
    // moves `line` there; null if there is anything else.
    const char* passText(const char* at, LineStart& line) const {
        const char* end = nullptr;
        for (const char* next = endOfLine(at); next != nullptr; next = endOfLine(end)) {
            const char* const bar = runs::endOfBlanks(next);
            if (*bar != '|') {
                return end;
            }
            line.offset = reader_.window_.offsetOf(next);
            line.barLine = ++line.number;
            end = runs::endOfPrintable(bar + 1);
            while (*end == '\t') {
                end = runs::endOfPrintable(end + 1);
            }
        }
        return nullptr;
    }

    // Begins the construct of the line; returns false if it is not to be passed.
    bool begin(const char* at, const LineStart& here) {
        if (!takesObjects_) {
            return false;
        }
        const Place place = reader_.placeOf(at, here);
        const bool isTooDeep = reader_.nesting_.depth() >= reader_.settings_.deepest;
        const bool isCut = line_.text.size() > reader_.settings_.longestName;
        if (isTooDeep || isCut || (line_.isObject() && !takeObject_(line_.text, place, skimmed_.depth))) {
            return false;
        }
        skimmed_.depth += line_.isObject() ? 1 : 0;
        within_ = line_.construct;
        reader_.push(line_.construct, place, here);
        ++constructs_;
        return true;
    }

    void endConstructs(std::size_t count) {
        if (count == 0) {
            return;
        }
        Nesting& nesting = reader_.nesting_;
        constructs_ -= count;
        for (; count > 0; --count) {
            skimmed_.depth -= skimmed_.depth > 0 && nesting.isWithin(Construct::object) ? 1 : 0;
            nesting.pop();
        }
        skimmed_.isAtEnd = constructs_ == 0;
        within_ = skimmed_.isAtEnd ? Construct::group : nesting.innermost().construct;
    }

    Reader& reader_;
    std::uint64_t before_;
    const TakeObject& takeObject_;
    const TakeProperty& takeProperty_;
    bool takesObjects_;
    bool takesAll_;
    Skimmed skimmed_;
    std::size_t constructs_; // the object and what is open in it
    Construct within_{};     // the innermost of them; a group if it has ended
    Line line_;
};

Skimmed Reader::skim(std::uint64_t before, const TakeObject& takeObject, const TakeProperty& takeProperty) {
    if (inLines_ && window_.offsetOf(nextLine_.token) >= before) {
        return {}; // as often happens where each line has a step
    }
    return Skimming(*this, before, takeObject, takeProperty).skim();
}

} // namespace notation
