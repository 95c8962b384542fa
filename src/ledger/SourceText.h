#pragma once

#include "host/encoding/KelTextDecoder.h"

#include <string>
#include <string_view>

namespace ledger {

/// Converts the texts of a file as the import does: to UTF-8. Bytes of files in UTF-8 are kept, valid or not.
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

/// Whether all bytes are ASCII.
[[nodiscard]] bool isPlain(std::string_view bytes);

/// The part of a quoted text that the import takes: the bytes before the first inner quote, with escapes.
[[nodiscard]] std::string_view takenOfQuoted(std::string_view bytes);

/// The class name that the import reads from a text: without the packages before it, if the path begins at the logical
/// view.
[[nodiscard]] std::string_view classNamed(std::string_view text);

} // namespace ledger
