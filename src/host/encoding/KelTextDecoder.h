#pragma once

#include "host/KelApi.h"
#include "host/encoding/KelEncodingConverter.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Brings the bytes of a model file, and the texts that quote them, to UTF-8.
///
/// Its operations throw `std::bad_alloc`, or `std::length_error` for a text above 2,147,483,646 bytes. It has a state
/// while it converts, so one thread uses it at a time. Costs grow with the number of bytes. The first text costs as
/// much as some kilobytes more: use one decoder for all texts of a file.
class KEL_API KelTextDecoder {
public:
    /// `encoding` is any name that the conversion service knows. "unknown", like any other name that the service does
    /// not know, leaves bytes as they are.
    explicit KelTextDecoder(const KelString& encoding) : from_(encoding), utf8_("UTF-8") {}

    /// `bytes` in UTF-8, with U+FFFD for each sequence that the encoding does not have; `isWhole`, unless null, tells
    /// whether there was none.
    [[nodiscard]] std::string toUtf8(std::string_view bytes, bool* isWhole = nullptr);

    struct Run {
        std::size_t offset;
        std::size_t length;
    };
    /// The sequences in `bytes` that the encoding does not have, in order: those that `toUtf8` replaces.
    [[nodiscard]] std::vector<Run> badRuns(std::string_view bytes);

private:
    KelEncodingConverter from_;
    KelEncodingConverter utf8_;
};
