// Reads lines whole that have one of the forms of `Line`. Everything else is left to the lexer, which goes on at the
// start of the line then.

#include "notation/ReaderLines.h"

#include <algorithm>
#include <utility>

namespace notation {

const Line* Reader::nextLine(std::uint64_t before) {
    LineStart after;
    if (!hasLine() || !parseLine(before, after)) {
        leaveLines();
        return nullptr;
    }
    if (line_.isStart()) {
        push(line_.construct, line_.valuePlace(), nextLine_);
    }
    line_.objectEnds = 0;
    for (std::uint64_t end = 0; end < line_.ends; ++end) {
        line_.objectEnds |= nesting_.isWithin(Construct::object) ? std::uint64_t{1} << end : 0;
        nesting_.pop();
    }
    nextLine_ = after;
    inLines_ = true;
    return &line_;
}

// Parses the next line, and changes nothing but `line_`.
inline bool Reader::parseLine(std::uint64_t before, LineStart& after) {
    LineParser parser(nextLine_.token, line_);
    const char* const ends = parser.parse(nesting_.isWithin(Construct::list));
    const char* const end = ends != nullptr ? endOfEnds(ends) : nullptr;
    if (end == nullptr || !findAfter(end, line_.isObject() && end == ends, nextLine_, after)) {
        return false;
    }
    line_.place = placeOf(nextLine_.token, nextLine_);
    line_.valueBegin = window_.offsetOf(parser.value());
    line_.endsBegin = window_.offsetOf(ends);
    line_.ends = static_cast<std::uint32_t>(end - ends);
    line_.next = window_.offsetOf(after.token);
    const std::size_t depth = nesting_.depth() + (line_.isStart() ? 1 : 0);
    return line_.next <= before && line_.next - line_.place.offset <= settings_.longestName &&
           line_.ends <= std::min<std::size_t>(Line::mostEnds, depth) && depth <= settings_.deepest;
}

// Whether the next token, or the current one if it has not been processed, is the first on its line, within a
// construct of which lines are read.
bool Reader::findLine() {
    const bool isBetween = damages_.empty() && ends_ == 0 && !reopens_ && !held_ && !isKeyed_;
    return isBetween && !nesting_.isEmpty() && nesting_.innermost().construct <= Construct::list &&
           lexer_.findLine(consumes_, nextLine_);
}

void Reader::leaveLines() {
    if (std::exchange(inLines_, false)) {
        lexer_.goOn(nextLine_);
        consumes_ = true;
        continuing_ = false;
    }
}

} // namespace notation
