#pragma once

#include "host/KelApi.h"
#include "host/encoding/KelEncodingConverter.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <memory>
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
    /// receives whether all were valid. Characters of earlier texts cost little.
    [[nodiscard]] std::string toUtf8(std::string_view bytes, bool* isWhole = nullptr);

    /// A range of bytes.
    struct Run {
        std::size_t offset;
        std::size_t length;
    };
    /// The invalid sequences in `bytes`, in order: those that `toUtf8` replaces. Most bytes are valid and most of their
    /// characters were in an earlier text: that costs next to nothing.
    [[nodiscard]] std::vector<Run> badRuns(std::string_view bytes);

private:
    /// What is known to be valid in any text: characters of one or two bytes, from texts that the service has read.
    struct Known {
        void learn(std::string_view bytes, const int* offsets, std::size_t count);
        [[nodiscard]] bool isValid(std::string_view bytes) const;

        std::bitset<256> singles;
        std::bitset<std::size_t{1} << 16> pairs;
    };

    /// The characters of one or two bytes in texts that `toUtf8` has converted, as one unit of UTF-16 each; 0 for none.
    struct Meanings {
        void learn(std::string_view bytes, const char16_t* units, const int* offsets, std::size_t count);
        /// Appends `bytes` in UTF-8; returns false if a character is not known.
        [[nodiscard]] bool append(std::string_view bytes, std::string& to) const;

        std::array<char16_t, 256> singles{};
        std::array<std::unique_ptr<std::array<char16_t, 256>>, 256> pairs; ///< by the first byte
    };

    void learn(std::string_view bytes);

    KelEncodingConverter from_;
    KelEncodingConverter utf8_;
    // Both null before they are needed, and if characters depend on those before them.
    std::unique_ptr<Known> known_;
    std::unique_ptr<Meanings> meanings_;
};
