#include "host/encoding/KelTextDecoder.h"

#include "host/encoding/convertText.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

#include <array>
#include <new>

namespace {

// Has a converter stop at what it cannot read, as long as this lives.
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

std::string KelTextDecoder::toUtf8(std::string_view bytes, bool* isWhole) {
    bool converted = true;
    std::string text;
    if (from_.getHandle() == nullptr || from_.isPlainText(bytes)) {
        text = bytes;
    } else {
        KelString inUtf8(bytes);
        converted = convertText(from_, utf8_, inUtf8);
        text = inUtf8.view();
    }
    if (isWhole != nullptr) {
        *isWhole = converted;
    }
    return text;
}

std::vector<KelTextDecoder::Run> KelTextDecoder::badRuns(std::string_view bytes) {
    std::vector<Run> runs;
    UConverter* const reader = from_.getHandle();
    if (reader == nullptr) {
        return runs;
    }
    ucnv_reset(reader);
    const Stopping stopping(reader);
    std::array<UChar, 2048> pivot;
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    for (bool more = true; more;) {
        UChar* filled = pivot.data();
        UErrorCode error = U_ZERO_ERROR;
        ucnv_toUnicode(reader, &filled, pivot.data() + pivot.size(), &at, end, nullptr, true, &error);
        more = U_FAILURE(error) != 0;
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
