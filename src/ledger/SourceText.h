#pragma once

#include "host/encoding/KelTextDecoder.h"

#include <string>
#include <string_view>

namespace ledger {

/// What the import makes of the texts of a file: UTF-8, but for texts in UTF-8, whose bytes it keeps, valid or not.
class SourceText {
public:
    /// `encoding` is that of the file, as `KelTextDecoder` takes it.
    explicit SourceText(const KelString& encoding);

    [[nodiscard]] std::string toUtf8(std::string_view bytes, bool* isWhole = nullptr) {
        return isKept_ ? std::string(bytes) : decoder_.toUtf8(bytes, isWhole);
    }

private:
    KelTextDecoder decoder_;
    bool isKept_;
};

/// Whether there is nothing but ASCII.
[[nodiscard]] bool isPlain(std::string_view bytes);

/// What the import takes of a text in quotes: what stands in front of the first quote within it, escapes as they are.
[[nodiscard]] std::string_view takenOfQuoted(std::string_view bytes);

/// The class that a text names to the import: without the packages in front, when it begins at the logical view.
[[nodiscard]] std::string_view classNamed(std::string_view text);

} // namespace ledger
