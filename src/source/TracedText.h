#pragma once

#include "notation/Event.h"
#include "notation/Line.h"
#include "notation/Listener.h"
#include "notation/Reader.h"
#include "source/Trace.h"
#include "units/UnitTree.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace source {

class TracedText;

/// The steps of a text, for one who reads along. Cursors of one text are independent of each other.
class StepCursor {
public:
    /// `text` must live as long.
    StepCursor(const TracedText& text, std::span<const Effect> effects) : text_(text), effects_(effects) {}

    /// The steps from the text before an offset of the current file that have not been taken yet. They belong to the
    /// last object or property before that offset.
    std::span<const Effect> takeBefore(std::uint64_t offset) {
        return hasStepBefore(offset) ? takeSome(offset) : std::span<const Effect>();
    }
    /// Whether a step from the text before an offset of the current file has not been taken yet.
    [[nodiscard]] inline bool hasStepBefore(std::uint64_t offset) const;
    /// All steps that have not been taken yet.
    std::span<const Effect> takeRest();
    /// The next one; null at the end.
    [[nodiscard]] const Effect* next() const { return taken_ < effects_.size() ? &effects_[taken_] : nullptr; }

private:
    std::span<const Effect> takeSome(std::uint64_t offset);

    const TracedText& text_;
    std::span<const Effect> effects_;
    std::size_t taken_ = 0;
};

/// Reads a model file and its units, each unit at the place of its content, together with the steps that an import took
/// because of that text. Used by one thread. Throws `std::system_error` when a file cannot be read. Reads files as
/// streams; memory does not grow with them.
class TracedText {
public:
    /// Called with the bytes of a file, block by block, as they are read; with none at its end. May throw.
    using Watch = std::function<void(std::uint32_t file, std::string_view bytes)>;

    /// `tree` and `trace` must live as long. Requires that `trace` has been located. `watch` may be empty.
    TracedText(const units::UnitTree& tree, const Trace& trace, Watch watch = {});
    ~TracedText();
    TracedText(const TracedText&) = delete;
    TracedText& operator=(const TracedText&) = delete;

    /// Advances to the next event; returns false at the end of the last file.
    bool next();
    [[nodiscard]] const notation::Event& event() const;
    /// Advances over a whole line, as `notation::Reader::nextLine`, if no object that refers to a unit begins or ends
    /// in it; otherwise returns null. The line takes the place of its events.
    const notation::Line* nextLine();
    /// Advances over lines of the innermost object that no step concerns, as `notation::Reader::skim`, if no object in
    /// them refers to a unit.
    notation::Skimmed skim(const notation::Reader::TakeObject& takeObject,
                           const notation::Reader::TakeProperty& takeProperty);
    /// Lets `listener`, which must live as long, take all events and lines from now on, each before its function
    /// returns. Nothing is skimmed any more. With units a listener cannot tell the files apart.
    void add(notation::Listener& listener) { listeners_.push_back(&listener); }
    /// For those who read along. To be called before anything has been read.
    [[nodiscard]] StepCursor getSteps() const { return {*this, effects_}; }
    /// The file that the event is in, as an index into `UnitTree::files`.
    [[nodiscard]] std::uint32_t getFile() const { return file_; }
    /// The unit that the object which starts here refers to; null if there is none, and for other events.
    [[nodiscard]] const units::Unit* getUnit() const { return unit_; }

    /// As those of a cursor.
    std::span<const Effect> takeBefore(std::uint64_t offset) { return steps_.takeBefore(offset); }
    [[nodiscard]] bool hasStepBefore(std::uint64_t offset) const { return steps_.hasStepBefore(offset); }
    std::span<const Effect> takeRest() { return steps_.takeRest(); }

private:
    struct OpenText;
    friend StepCursor;

    void open(std::size_t file);
    notation::Reader* readerOfLines(std::uint64_t& before);
    [[nodiscard]] const units::Unit* unitAt(const notation::Place& place);

    const units::UnitTree& tree_;
    Watch watch_;
    std::span<const Effect> effects_;
    StepCursor steps_{*this, effects_};
    std::vector<notation::Listener*> listeners_;
    std::vector<std::unique_ptr<OpenText>> open_; // the innermost unit last
    std::vector<bool> isClosed_;                  // by file
    std::vector<const units::Unit*> objects_;     // of each open object the unit that it refers to, or null
    const units::Unit* toOpen_ = nullptr;
    const units::Unit* unit_ = nullptr;
    std::uint32_t file_ = 0;
};

inline bool StepCursor::hasStepBefore(std::uint64_t offset) const {
    return taken_ < effects_.size() && (effects_[taken_].file != text_.file_ || effects_[taken_].begin < offset);
}

} // namespace source
