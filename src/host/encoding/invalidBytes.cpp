#include "host/encoding/invalidBytes.h"

#include "host/encoding/KelEncodingConverter.h"

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

std::vector<InvalidBytes> invalidBytes(KelEncodingConverter& from, std::string_view text) {
    UConverter* const reader = from.getHandle();
    ucnv_reset(reader);
    const Stopping stopping(reader);
    std::vector<InvalidBytes> found;
    std::array<UChar, 2048> pivot;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (bool more = true; more;) {
        UChar* filled = pivot.data();
        UErrorCode error = U_ZERO_ERROR;
        ucnv_toUnicode(reader, &filled, pivot.data() + pivot.size(), &at, end, nullptr, true, &error);
        more = U_FAILURE(error) != 0;
        if (error == U_INVALID_CHAR_FOUND || error == U_ILLEGAL_CHAR_FOUND || error == U_TRUNCATED_CHAR_FOUND) {
            std::array<char, 32> bytes{};
            auto length = static_cast<std::int8_t>(bytes.size());
            UErrorCode ignored = U_ZERO_ERROR;
            ucnv_getInvalidChars(reader, bytes.data(), &length, &ignored);
            found.push_back({static_cast<std::size_t>(at - text.data()) - static_cast<std::size_t>(length),
                             static_cast<std::size_t>(length)});
        } else if (more && error != U_BUFFER_OVERFLOW_ERROR) {
            throw std::bad_alloc();
        }
    }
    return found;
}
