#pragma once

#include "notation/Event.h"
#include "notation/Line.h"
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
    /// The file that the event is in, as an index into `UnitTree::files`.
    [[nodiscard]] std::uint32_t getFile() const { return file_; }
    /// The unit that the object which starts here refers to; null if there is none, and for other events.
    [[nodiscard]] const units::Unit* getUnit() const { return unit_; }

    /// The steps from the text before an offset of the current file that have not been taken yet. They belong to the
    /// last object or property before that offset.
    std::span<const Effect> takeBefore(std::uint64_t offset) {
        return hasStepBefore(offset) ? takeSome(offset) : std::span<const Effect>();
    }
    /// Whether a step from the text before an offset of the current file has not been taken yet.
    [[nodiscard]] bool hasStepBefore(std::uint64_t offset) const {
        return taken_ < effects_.size() && (effects_[taken_].file != file_ || effects_[taken_].begin < offset);
    }
    /// All steps that have not been taken yet.
    std::span<const Effect> takeRest();

private:
    struct OpenText;

    void open(std::size_t file);
    notation::Reader* readerOfLines(std::uint64_t& before);
    std::span<const Effect> takeSome(std::uint64_t offset);
    [[nodiscard]] const units::Unit* unitAt(const notation::Place& place);

    const units::UnitTree& tree_;
    Watch watch_;
    std::span<const Effect> effects_;
    std::size_t taken_ = 0;
    std::vector<std::unique_ptr<OpenText>> open_; // the innermost unit last
    std::vector<bool> isClosed_;                  // by file
    std::vector<const units::Unit*> objects_;     // of each open object the unit that it refers to, or null
    const units::Unit* toOpen_ = nullptr;
    const units::Unit* unit_ = nullptr;
    std::uint32_t file_ = 0;
};

} // namespace source
