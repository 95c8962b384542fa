#pragma once

#include "notation/Event.h"

#include <cstdint>
#include <optional>
#include <string>

namespace notation {

/// The start of the header. The bridge refuses files without it.
inline constexpr std::string_view headerStart = "(object Petal";

/// The object "Petal" at the start of a model file. Of a property that occurs twice, the last one counts. Numbers are
/// integers.
struct Header {
    bool isModel = false;  ///< the file has a header; if not, the other members are empty
    bool isClosed = false; ///< by a parenthesis; if not, the file may end within the header, even within a number
    std::optional<std::int64_t> version;
    std::optional<std::int64_t> charSet;
    std::string written; ///< the tool that wrote the file: bytes in the file's encoding, with escapes
};

/// Gathers the header from the events of a file.
class HeaderGatherer {
public:
    /// Takes the events of the file, one after the other from the first on. Returns false when the file is not a model
    /// file.
    bool take(const Event& event) { return part_ == Part::after ? header_.isModel : takeEarly(event); }
    /// Complete when an event after the header, or all events of the file, have been taken.
    [[nodiscard]] const Header& header() const { return header_; }

private:
    enum class Part : std::uint8_t { before, within, after };

    bool takeEarly(const Event& event);
    void takeProperty(const Event& event);

    Part part_ = Part::before;
    bool inWritten_ = false; // further pieces belong to `written`
    Header header_;
};

} // namespace notation
