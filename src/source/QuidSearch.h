#pragma once

#include "source/readOwner.h"
#include "units/OpenFile.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace source {

/// A property "quid" with a text.
struct FoundQuid {
    std::uint64_t owner = 0;   ///< the offset of the "(" of the object that has it
    std::uint64_t headEnd = 0; ///< the offset of the first property or object in that object
    std::string_view text;     ///< unchanged bytes; valid until the next call
};

/// Finds the quids in a file, in the order of its text, without reading all of the notation.
///
/// It gives up (`isLost`) where the text near a quid does not show whose it is. Until then its results are those of
/// `notation::Reader`, which the file must also not nest deeper than: half of that limit makes it give up. Used by one
/// thread. Throws `std::system_error`. Time is proportional to the file; memory does not grow with it.
class QuidSearch {
public:
    explicit QuidSearch(const std::filesystem::path& file);

    /// The next quid; nothing at the end of the file, or if the search is lost.
    std::optional<FoundQuid> next();
    [[nodiscard]] bool isLost() const { return isLost_; }

    /// Once the search is at its end: how often an object may have the kind "Design", at any depth and in texts too.
    [[nodiscard]] std::uint64_t getDesigns() const { return designs_; }

private:
    /// How far the tokens before a quid are the head of an object.
    enum class Head : std::uint8_t { none, opened, named, whole };

    void refill();
    void countDesigns(std::size_t from, std::size_t to);
    void measureDepth(std::size_t from, std::size_t to);
    [[nodiscard]] std::optional<FoundQuid> quidAt(std::size_t at);
    [[nodiscard]] std::optional<FoundQuid> ownedByOther(std::size_t at, std::size_t end, std::string_view text);
    [[nodiscard]] QuidOwner ownerFrom(std::uint64_t object, std::size_t at, std::size_t end);
    template <class Read>
    [[nodiscard]] auto readFrom(std::uint64_t object, std::size_t at, std::size_t end, Read read);
    bool lexTo(std::size_t at);
    void takeToken();
    void takeQuoted();
    void takeWord();
    [[nodiscard]] std::size_t lineBegin(std::size_t at, std::size_t least) const;
    [[nodiscard]] std::size_t lineEnd(std::size_t at) const;
    [[nodiscard]] std::optional<std::size_t> textBegin(std::size_t at);
    [[nodiscard]] std::vector<std::uint64_t> objectsBefore(std::size_t at);
    std::nullopt_t lose() {
        isLost_ = true;
        return std::nullopt;
    }
    [[nodiscard]] std::size_t indexOf(const char* at) const { return static_cast<std::size_t>(at - text_.data()); }
    [[nodiscard]] char byte(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }

    units::OpenFile source_;
    units::OpenFile again_; // the same file, for reading from other places
    std::unique_ptr<char[]> buffer_;
    std::string_view text_;    // a part of the file, in the buffer before a NUL; other members are indexes into it
    std::uint64_t origin_ = 0; // the offset of its first byte
    bool isWhole_ = false;     // the file ends with it
    bool isLost_ = false;
    std::size_t next_ = 0;    // where to search on
    std::size_t checked_ = 0; // how far depth and designs were looked for
    std::size_t lexed_ = 0;   // a place between tokens
    Head head_ = Head::none;  // there
    std::size_t headBegin_ = 0;
    std::int64_t depth_ = 0; // of parentheses, those in texts too
    std::uint64_t designs_ = 0;
    std::uint64_t readBytes_ = 0; // of objects whose quid is not their first property
};

/// The objects that can be that of the whole model, as offsets. Nothing for what the start of the file does not show.
struct TopObjects {
    std::optional<std::uint64_t> first;  ///< of the file
    std::optional<std::uint64_t> design; ///< the first with the kind "Design" that is in no other construct
};
[[nodiscard]] TopObjects findTopObjects(const std::filesystem::path& file);

} // namespace source
