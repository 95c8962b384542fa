// Converting texts with ICU: convertText replaces invalid sequences, KelTextDecoder also finds them.
#include "host/encoding/convertText.h"

#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/KelTextDecoder.h"
#include "host/text/KelString.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/ucnv_err.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <array>
#include <new>
#include <utility>

namespace {

constexpr UChar replacementCharacter = 0xFFFD;
constexpr UChar byteOrderMark = 0xFEFF;

// ICU calls the callbacks below for conversion problems, but also when a converter is reset or closed.
bool isConversionProblem(UConverterCallbackReason reason) {
    return reason <= UCNV_IRREGULAR;
}

// Replaces ICU's own substitution, which writes U+001A for some encodings.
void writeReplacement(const void* context, UConverterToUnicodeArgs* arguments, const char*, std::int32_t,
                      UConverterCallbackReason reason, UErrorCode* error) {
    if (isConversionProblem(reason)) {
        *static_cast<bool*>(const_cast<void*>(context)) = false;
        *error = U_ZERO_ERROR;
        ucnv_cbToUWriteUChars(arguments, &replacementCharacter, 1, 0, error);
    }
}

void writeSubstitute(const void* context, UConverterFromUnicodeArgs* arguments, const UChar* units, std::int32_t length,
                     UChar32 character, UConverterCallbackReason reason, UErrorCode* error) {
    if (isConversionProblem(reason)) {
        *static_cast<bool*>(const_cast<void*>(context)) = false;
        UCNV_FROM_U_CALLBACK_SUBSTITUTE(nullptr, arguments, units, length, character, reason, error);
    }
}

// Installs the two callbacks for one conversion. `valid` becomes false at the first problem.
class ProblemHandling {
public:
    ProblemHandling(UConverter* reader, UConverter* writer, bool& valid) : reader_(reader), writer_(writer) {
        handle(writeReplacement, writeSubstitute, &valid);
    }
    ProblemHandling(const ProblemHandling&) = delete;
    ProblemHandling& operator=(const ProblemHandling&) = delete;
    ~ProblemHandling() { handle(UCNV_TO_U_CALLBACK_SUBSTITUTE, UCNV_FROM_U_CALLBACK_SUBSTITUTE, nullptr); }

private:
    void handle(UConverterToUCallback reading, UConverterFromUCallback writing, const void* context) const {
        UErrorCode error = U_ZERO_ERROR;
        ucnv_setToUCallBack(reader_, reading, context, nullptr, nullptr, &error);
        ucnv_setFromUCallBack(writer_, writing, context, nullptr, nullptr, &error);
    }

    UConverter* reader_;
    UConverter* writer_;
};

// Whether the call must be repeated because its output buffer was full.
bool isToContinue(UErrorCode error) {
    if (U_FAILURE(error) && error != U_BUFFER_OVERFLOW_ERROR) {
        throw std::bad_alloc(); // the callbacks handle all other errors
    }
    return error == U_BUFFER_OVERFLOW_ERROR;
}

// Appends the converted `text` to `converted`; with `isLast` also the bytes that the writer still holds.
void write(UConverter* writer, const UChar* text, const UChar* end, bool isLast, KelString& converted) {
    std::array<char, 4096> buffer;
    bool more = true;
    while (more) {
        char* filled = buffer.data();
        UErrorCode error = U_ZERO_ERROR;
        ucnv_fromUnicode(writer, &filled, buffer.data() + buffer.size(), &text, end, nullptr,
                         static_cast<UBool>(isLast), &error);
        more = isToContinue(error);
        converted.append({buffer.data(), static_cast<std::size_t>(filled - buffer.data())});
    }
}

} // namespace

bool convertText(KelEncodingConverter& from, KelEncodingConverter& to, KelString& text) {
    if (from.isPlainText(text.view()) && to.isPlainText(text.view())) {
        return true;
    }
    bool valid = true;
    UConverter* const reader = from.getHandle();
    UConverter* const writer = to.getWriter();
    ucnv_reset(reader);
    ucnv_reset(writer);
    const ProblemHandling handling(reader, writer, valid);

    KelString converted;
    std::array<UChar, 2048> pivot;
    const char* source = text.text();
    const char* const sourceEnd = source + text.length();
    bool more = true;
    for (bool atStart = true; more; atStart = false) {
        UChar* filled = pivot.data();
        UErrorCode error = U_ZERO_ERROR;
        ucnv_toUnicode(reader, &filled, pivot.data() + pivot.size(), &source, sourceEnd, nullptr, true, &error);
        more = isToContinue(error);
        const bool marked = atStart && filled != pivot.data() && pivot.front() == byteOrderMark;
        write(writer, pivot.data() + (marked ? 1 : 0), filled, !more, converted);
    }
    text = std::move(converted);
    return valid;
}

namespace {

// Makes a converter stop at invalid sequences during the lifetime of this object.
class Stopping {
public:
    explicit Stopping(UConverter* reader) : reader_(reader) { handle(UCNV_TO_U_CALLBACK_STOP); }
    Stopping(const Stopping&) = delete;
    Stopping& operator=(const Stopping&) = delete;
    ~Stopping() { handle(UCNV_TO_U_CALLBACK_SUBSTITUTE); }

private:
    void handle(UConverterToUCallback callback) const {
        UErrorCode error = U_ZERO_ERROR;
        ucnv_setToUCallBack(reader_, callback, nullptr, nullptr, nullptr, &error);
    }

    UConverter* reader_;
};

} // namespace

namespace {

std::size_t byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]);
}

std::size_t pairAt(std::string_view bytes, std::size_t index) {
    return byteAt(bytes, index) << 8 | byteAt(bytes, index + 1);
}

// Whether a character of the encoding means the same after any others.
bool isWithoutStates(const UConverter* converter) {
    const UConverterType type = ucnv_getType(converter);
    return type == UCNV_SBCS || type == UCNV_MBCS || type == UCNV_LATIN_1;
}

} // namespace

std::string KelTextDecoder::toUtf8(std::string_view bytes, bool* isWhole) {
    bool converted = true;
    std::string text;
    if (from_.getHandle() == nullptr || from_.isPlainText(bytes)) {
        text = bytes;
    } else if (meanings_ == nullptr || !meanings_->append(bytes, text)) {
        KelString inUtf8(bytes);
        converted = convertText(from_, utf8_, inUtf8);
        text = inUtf8.view();
        if (converted) {
            learn(bytes);
        }
    }
    if (isWhole != nullptr) {
        *isWhole = converted;
    }
    return text;
}

// Learns the characters of a valid text, unless it is long.
void KelTextDecoder::learn(std::string_view bytes) {
    UConverter* const reader = from_.getHandle();
    if (!isWithoutStates(reader)) {
        return;
    }
    std::array<UChar, 512> units;
    std::array<int, units.size()> offsets;
    UChar* filled = units.data();
    const char* at = bytes.data();
    UErrorCode error = U_ZERO_ERROR;
    ucnv_reset(reader);
    ucnv_toUnicode(reader, &filled, units.data() + units.size(), &at, at + bytes.size(), offsets.data(), true, &error);
    if (U_FAILURE(error)) {
        return;
    }
    if (meanings_ == nullptr) {
        meanings_ = std::make_unique<Meanings>();
    }
    meanings_->learn(bytes, units.data(), offsets.data(), static_cast<std::size_t>(filled - units.data()));
}

// `offsets` are the places of the units in the text.
void KelTextDecoder::Meanings::learn(std::string_view bytes, const char16_t* units, const int* offsets,
                                     std::size_t count) {
    for (std::size_t unit = 0; unit < count; ++unit) {
        const auto begin = static_cast<std::size_t>(offsets[unit]);
        const auto end = unit + 1 < count ? static_cast<std::size_t>(offsets[unit + 1]) : bytes.size();
        if (end > bytes.size()) {
            return; // not known where it is
        }
        const bool isAlone = unit == 0 || offsets[unit - 1] != offsets[unit];
        if (!isAlone || U16_IS_SURROGATE(units[unit]) || units[unit] == byteOrderMark) {
            continue;
        }
        if (begin + 1 == end) {
            singles[byteAt(bytes, begin)] = units[unit];
        } else if (begin + 2 == end) {
            auto& seconds = pairs[byteAt(bytes, begin)];
            if (seconds == nullptr) {
                seconds = std::make_unique<std::array<char16_t, 256>>();
            }
            (*seconds)[byteAt(bytes, begin + 1)] = units[unit];
        }
    }
}

// No character begins with a byte that is one by itself.
bool KelTextDecoder::Meanings::append(std::string_view bytes, std::string& to) const {
    constexpr std::size_t longest = 3; // of a unit that is a character
    const std::size_t kept = to.size();
    to.resize(kept + longest * bytes.size());
    char* out = to.data() + kept;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        char16_t unit = singles[byteAt(bytes, at)];
        if (unit == 0) {
            const auto& seconds = pairs[byteAt(bytes, at)];
            unit = seconds != nullptr && ++at < bytes.size() ? (*seconds)[byteAt(bytes, at)] : char16_t{0};
        }
        if (unit == 0) {
            to.resize(kept);
            return false;
        }
        std::size_t length = 0;
        U8_APPEND_UNSAFE(out, length, unit);
        out += length;
    }
    to.resize(static_cast<std::size_t>(out - to.data()));
    return true;
}

// Learns the characters of a valid text; `offsets` are the places in it of `count` units of UTF-16.
void KelTextDecoder::Known::learn(std::string_view bytes, const int* offsets, std::size_t count) {
    for (std::size_t unit = 0; unit < count; ++unit) {
        const auto begin = static_cast<std::size_t>(offsets[unit]);
        const auto end = unit + 1 < count ? static_cast<std::size_t>(offsets[unit + 1]) : bytes.size();
        if (end > bytes.size()) {
            return; // not known where it is
        }
        if (begin + 1 == end) {
            singles.set(byteAt(bytes, begin));
        } else if (begin + 2 == end) {
            pairs.set(pairAt(bytes, begin));
        }
    }
}

// No character begins with a byte that is one by itself.
bool KelTextDecoder::Known::isValid(std::string_view bytes) const {
    for (std::size_t at = 0; at < bytes.size();) {
        if (singles[byteAt(bytes, at)]) {
            ++at;
        } else if (at + 1 < bytes.size() && pairs[pairAt(bytes, at)]) {
            at += 2;
        } else {
            return false;
        }
    }
    return true;
}

std::vector<KelTextDecoder::Run> KelTextDecoder::badRuns(std::string_view bytes) {
    std::vector<Run> runs;
    UConverter* const reader = from_.getHandle();
    if (reader == nullptr) {
        return runs;
    }
    if (known_ == nullptr && isWithoutStates(reader)) {
        known_ = std::make_unique<Known>();
    }
    if (known_ != nullptr && known_->isValid(bytes)) {
        return runs;
    }
    ucnv_reset(reader);
    const Stopping stopping(reader);
    std::array<UChar, 2048> pivot;
    std::array<int, pivot.size()> offsets;
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    for (bool more = true; more;) {
        UChar* filled = pivot.data();
        UErrorCode error = U_ZERO_ERROR;
        const bool isWhole = at == bytes.data();
        ucnv_toUnicode(reader, &filled, pivot.data() + pivot.size(), &at, end, offsets.data(), true, &error);
        more = U_FAILURE(error) != 0;
        if (known_ != nullptr && isWhole && !more) {
            known_->learn(bytes, offsets.data(), static_cast<std::size_t>(filled - pivot.data()));
        }
        if (error == U_INVALID_CHAR_FOUND || error == U_ILLEGAL_CHAR_FOUND || error == U_TRUNCATED_CHAR_FOUND) {
            std::array<char, 32> invalid{};
            auto length = static_cast<std::int8_t>(invalid.size());
            UErrorCode ignored = U_ZERO_ERROR;
            ucnv_getInvalidChars(reader, invalid.data(), &length, &ignored);
            const std::ptrdiff_t offset = at - bytes.data() - length;
            runs.push_back({static_cast<std::size_t>(offset), static_cast<std::size_t>(at - bytes.data() - offset)});
        } else if (more && error != U_BUFFER_OVERFLOW_ERROR) {
            throw std::bad_alloc();
        }
    }
    return runs;
}
