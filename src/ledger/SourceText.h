#pragma once

#include "host/encoding/KelEncodingConverter.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ledger {

/// What the import makes of the texts of a file.
class SourceText {
public:
    /// `encoding` is that of the file; "unknown", or one that nobody knows, leaves bytes as they are.
    explicit SourceText(const KelString& encoding);

    /// The bytes in UTF-8, with U+FFFD for those that the encoding does not have; `isWhole`, unless null, becomes
    /// false then.
    [[nodiscard]] std::string toUtf8(std::string_view bytes, bool* isWhole = nullptr);

    /// Runs of bytes that the encoding does not have: the offset and length of each.
    struct Run {
        std::size_t offset;
        std::size_t length;
    };
    [[nodiscard]] std::vector<Run> badRuns(std::string_view bytes);

private:
    KelEncodingConverter from_;
    KelEncodingConverter utf8_;
    bool converts_;
};

/// Whether there is nothing but ASCII.
[[nodiscard]] bool isPlain(std::string_view bytes);

/// What the import takes of a text in quotes: what stands in front of the first quote within it, escapes as they are.
[[nodiscard]] std::string_view takenOfQuoted(std::string_view bytes);

/// The class that a text names to the import: without the packages in front, when it begins at the logical view.
[[nodiscard]] std::string_view classNamed(std::string_view text);

} // namespace ledger
