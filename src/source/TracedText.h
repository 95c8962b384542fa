#pragma once

#include "notation/Event.h"
#include "source/Trace.h"
#include "units/UnitTree.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace source {

/// Reads a model file and its units, each unit at the place of its content, together with the steps that an import took
/// because of that text. Used by one thread. Throws `std::system_error` when a file cannot be read. Reads files as
/// streams; memory does not grow with them.
class TracedText {
public:
    /// `tree` and `trace` must live as long. Requires that `trace` has been located.
    TracedText(const units::UnitTree& tree, const Trace& trace);
    ~TracedText();
    TracedText(const TracedText&) = delete;
    TracedText& operator=(const TracedText&) = delete;

    /// Advances to the next event; returns false at the end of the last file.
    bool next();
    [[nodiscard]] const notation::Event& event() const;
    /// The file that the event is in, as an index into `UnitTree::files`.
    [[nodiscard]] std::uint32_t getFile() const { return file_; }
    /// The unit that the object which starts here refers to; null if there is none, and for other events.
    [[nodiscard]] const units::Unit* getUnit() const { return unit_; }

    /// The steps from the text before an offset of the current file that have not been taken yet. They belong to the
    /// last object or property before that offset.
    std::span<const Effect> takeBefore(std::uint64_t offset) {
        const bool isNone =
            taken_ == effects_.size() || (effects_[taken_].file == file_ && effects_[taken_].begin >= offset);
        return isNone ? std::span<const Effect>() : takeSome(offset);
    }
    /// All steps that have not been taken yet.
    std::span<const Effect> takeRest();

private:
    struct OpenText;

    void open(std::size_t file);
    std::span<const Effect> takeSome(std::uint64_t offset);
    [[nodiscard]] const units::Unit* unitAt(const notation::Place& place);

    const units::UnitTree& tree_;
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
