#pragma once

#include "host/KelApi.h"
#include "host/encoding/KelEncodingConverter.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Converts the bytes of a model file, and texts that quote them, to UTF-8.
///
/// The functions may throw `std::bad_alloc`, and `std::length_error` for a text above 2,147,483,646 bytes. One thread
/// at a time may use a decoder. The cost is proportional to the number of bytes. The first text costs as much as some
/// kilobytes more, so use one decoder for all texts of a file.
class KEL_API KelTextDecoder {
public:
    /// `encoding` is any name that the conversion service knows. With any other name, such as "unknown", bytes remain
    /// unchanged.
    explicit KelTextDecoder(const KelString& encoding) : from_(encoding), utf8_("UTF-8") {}

    /// `bytes` in UTF-8, with U+FFFD for each sequence that is invalid in the encoding. `isWhole`, unless null,
    /// receives whether all were valid.
    [[nodiscard]] std::string toUtf8(std::string_view bytes, bool* isWhole = nullptr);

    /// A range of bytes.
    struct Run {
        std::size_t offset;
        std::size_t length;
    };
    /// The invalid sequences in `bytes`, in order: those that `toUtf8` replaces.
    [[nodiscard]] std::vector<Run> badRuns(std::string_view bytes);

private:
    KelEncodingConverter from_;
    KelEncodingConverter utf8_;
};
