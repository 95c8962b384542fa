#pragma once

#include "notation/Event.h"
#include "source/Trace.h"
#include "units/UnitTree.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace source {

/// Reads a model's file and those of its units, each unit where its content belongs, and gives out the steps that an
/// import took on the way.
///
/// Files are read as a stream. Used by one thread. Throws `std::system_error` when a file cannot be read.
class TracedText {
public:
    /// `tree` and `trace` must live as long; `trace` has been located.
    TracedText(const units::UnitTree& tree, const Trace& trace);
    ~TracedText();
    TracedText(const TracedText&) = delete;
    TracedText& operator=(const TracedText&) = delete;

    /// Goes on to the next event; false at the end of the last file.
    bool next();
    [[nodiscard]] const notation::Event& event() const;
    /// The file that the event is in, as an index into `UnitTree::files`.
    [[nodiscard]] std::uint32_t getFile() const { return file_; }
    /// The unit that an object stands for; null for none, and unless the event is an object's start.
    [[nodiscard]] const units::Unit* getUnit() const { return unit_; }

    /// The steps that come from the text before an offset of the current file and have not been given out. They belong
    /// to what the caller met last before that offset.
    std::span<const Effect> takeBefore(std::uint64_t offset) {
        const bool isNone =
            taken_ == effects_.size() || (effects_[taken_].file == file_ && effects_[taken_].begin >= offset);
        return isNone ? std::span<const Effect>() : takeSome(offset);
    }
    /// All steps that have not been given out.
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
    std::vector<const units::Unit*> objects_;     // for each open object the unit that it stands for, or null
    const units::Unit* toOpen_ = nullptr;
    const units::Unit* unit_ = nullptr;
    std::uint32_t file_ = 0;
};

} // namespace source
