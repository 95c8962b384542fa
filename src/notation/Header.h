#pragma once

#include "notation/Event.h"

#include <cstdint>
#include <optional>
#include <string>

namespace notation {

/// How the header begins as every tool writes it: a file without this is no model file to the bridge.
inline constexpr std::string_view headerStart = "(object Petal";

/// The object "Petal" that a model file begins with. Of a property that it has twice the last counts; numbers are
/// integers.
struct Header {
    bool isModel = false;  ///< it is there; if not, nothing else is told
    bool isClosed = false; ///< by a parenthesis; if not, the file may end within it, and within a number
    std::optional<std::int64_t> version;
    std::optional<std::int64_t> charSet;
    std::string written; ///< what wrote the file: bytes in the file's encoding, escapes included
};

/// Gathers the header from the events of a file.
class HeaderGatherer {
public:
    /// Takes the next event of the file, from the first on. False when the file is no model file.
    bool take(const Event& event) { return part_ == Part::behind ? header_.isModel : takeEarly(event); }
    /// Complete once something else has begun behind it, or the file has ended.
    [[nodiscard]] const Header& header() const { return header_; }

private:
    enum class Part : std::uint8_t { before, within, behind };

    bool takeEarly(const Event& event);
    void takeProperty(const Event& event);

    Part part_ = Part::before;
    bool inWritten_ = false; // a further piece of the value is one of `written`
    Header header_;
};

} // namespace notation
