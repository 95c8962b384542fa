#include "notationFault.h"

#include "support/NotationEvents.h"

#include <algorithm>

namespace fuzz {

using namespace notation;

namespace {

constexpr std::size_t usualWindow = 4096; // quickly made
constexpr std::size_t smallWindow = 256;
constexpr std::size_t shallow = 20;
constexpr std::size_t blockSizes[] = {1, 7, 4096};

/// Follows a reading and notes the first thing that must not be.
class Check {
public:
    explicit Check(std::uint64_t size) : size_(size) {}

    void take(const Event& event) {
        require(event.place.offset <= size_, "a place lies after the end");
        require(event.kind == EventKind::damage || event.end <= size_, "an end lies after the end of the text");
        require(event.kind == EventKind::damage || event.end >= event.place.offset, "an end lies before its beginning");
        require((event.kind == EventKind::damage) == (event.damage != nullptr), "a damage is not reported");
        require(!event.isProperty() || (!open_.empty() && open_.back() == Construct::object), "a key outside objects");
        require(!event.continues || continues_, "a piece goes on with nothing");
        if (event.kind == EventKind::start) {
            require(event.depth == open_.size(), "a start at another depth");
            require(event.names.size() <= Reader::mostNames, "too many names");
            open_.push_back(event.construct);
        } else if (event.kind == EventKind::end) {
            require(!open_.empty() && open_.back() == event.construct, "an end without its start");
            open_.resize(open_.empty() ? 0 : open_.size() - 1);
            require(event.depth == open_.size(), "an end at another depth");
        }
        if (event.kind != EventKind::damage) {
            continues_ =
                event.kind == EventKind::text || event.kind == EventKind::line || event.kind == EventKind::word;
            require(event.continues || event.place.offset >= last_ || event.kind == EventKind::end, "a step back");
            last_ = event.kind == EventKind::end ? last_ : event.place.offset;
        }
        deepest_ = std::max(deepest_, open_.size());
        require(++events_ <= 4 * size_ + 4, "more events than bytes could make");
    }
    [[nodiscard]] std::string finish(std::size_t deepest) {
        require(open_.empty(), "something stays open");
        require(deepest_ <= deepest, "nested deeper than allowed");
        return fault_;
    }

private:
    void require(bool holds, const char* fault) {
        if (!holds && fault_.empty()) {
            fault_ = fault;
        }
    }

    std::uint64_t size_;
    std::uint64_t last_ = 0;
    std::uint64_t events_ = 0;
    std::size_t deepest_ = 0;
    bool continues_ = false;
    std::vector<Construct> open_;
    std::string fault_;
};

std::string faultOf(std::string_view bytes, const Reader::Settings& settings) {
    MemorySource source(bytes);
    Reader reader(source, settings);
    Check check(bytes.size());
    while (reader.next()) {
        check.take(reader.event());
    }
    std::string fault = check.finish(settings.deepest);
    return reader.next() ? "it goes on after its end" : fault;
}

} // namespace

std::string notationFault(std::string_view text) {
    Reader::Settings usual;
    usual.window = usualWindow;
    Reader::Settings small;
    small.window = smallWindow;
    small.longestName = smallWindow / 2;
    small.deepest = shallow;
    for (const Reader::Settings& settings : {usual, small}) {
        if (std::string fault = faultOf(text, settings); !fault.empty()) {
            return fault;
        }
        if (const std::string slow = notation::test::slowDifference(text, settings); !slow.empty()) {
            return "what is read depends on how fast it is read: " + slow;
        }
    }
    const std::string whole = notation::test::eventsOf(text, usual);
    const bool same = std::ranges::all_of(
        blockSizes, [&](std::size_t blockSize) { return notation::test::eventsOf(text, usual, blockSize) == whole; });
    return same ? "" : "what is read depends on the size of the blocks";
}

} // namespace fuzz
