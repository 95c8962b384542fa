#include "host/encoding/KelEncodingConverter.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace {

// The encodings whose converters put a byte order mark in front of what they write, and what such text is read as
// when it has none.
struct MarkedEncoding {
    std::string_view canonicalName;
    const char* unmarked;
};
constexpr std::array<MarkedEncoding, 2> markedEncodings = {{{"UTF-16", "UTF-16BE"}, {"UTF-32", "UTF-32BE"}}};

std::u16string decode(UConverter* converter, std::string_view bytes) {
    std::u16string text(bytes.size() + 1, u'\0');
    UErrorCode error = U_ZERO_ERROR;
    const int length = ucnv_toUChars(converter, text.data(), static_cast<int>(text.size()), bytes.data(),
                                     static_cast<int>(bytes.size()), &error);
    text.resize(U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0);
    return text;
}

std::string encode(UConverter* converter, std::u16string_view text) {
    std::string bytes(text.size() + 1, '\0');
    UErrorCode error = U_ZERO_ERROR;
    const int length = ucnv_fromUChars(converter, bytes.data(), static_cast<int>(bytes.size()), text.data(),
                                       static_cast<int>(text.size()), &error);
    bytes.resize(U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0);
    return bytes;
}

// Whether these ASCII characters come through unchanged in both directions.
bool standForThemselves(const KelEncodingConverter& converter, const std::string& ascii) {
    const std::u16string text(ascii.begin(), ascii.end());
    return decode(converter.getHandle(), ascii) == text && encode(converter.getWriter(), text) == ascii;
}

} // namespace

void KelEncodingConverter::Close::operator()(UConverter* converter) const noexcept {
    ucnv_close(converter);
}

KelEncodingConverter::Handle KelEncodingConverter::open(const char* encodingName) {
    UErrorCode error = U_ZERO_ERROR;
    return Handle(ucnv_open(encodingName, &error));
}

KelEncodingConverter::KelEncodingConverter(const KelString& encodingName) : handle_(open(encodingName.text())) {
    if (handle_ == nullptr) {
        return;
    }
    const KelString canonicalName = getEncodingName();
    const auto marked = std::find_if(markedEncodings.begin(), markedEncodings.end(), [&](const auto& encoding) {
        return encoding.canonicalName == canonicalName.view();
    });
    if (marked != markedEncodings.end()) {
        writer_ = open(marked->unmarked);
    }
}

// A byte is plain when it stands for itself at the start of a text. In an encoding where a plain byte changed what
// the one after it means, none is: a text of plain bytes must be plain as a whole.
std::bitset<128> KelEncodingConverter::findPlainBytes() const {
    std::string plain;
    for (char byte = 0;; ++byte) {
        if (standForThemselves(*this, std::string(1, byte))) {
            plain += byte;
        }
        if (byte == '\x7F') {
            break;
        }
    }
    std::string pairs;
    for (const char first : plain) {
        for (const char second : plain) {
            pairs += first;
            pairs += second;
        }
    }
    std::bitset<128> found;
    if (standForThemselves(*this, pairs)) {
        for (const char byte : plain) {
            found.set(static_cast<std::size_t>(byte));
        }
    }
    return found;
}

KelString KelEncodingConverter::getEncodingName() const {
    UErrorCode error = U_ZERO_ERROR;
    return handle_ != nullptr ? KelString(ucnv_getName(handle_.get(), &error)) : KelString();
}

bool KelEncodingConverter::isPlainText(const KelString& text) const {
    if (handle_ == nullptr) {
        return text.isEmpty();
    }
    if (!plainBytes_) {
        plainBytes_ = findPlainBytes();
    }
    const std::string_view bytes = text.view();
    return std::all_of(bytes.begin(), bytes.end(), [&](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return value < plainBytes_->size() && (*plainBytes_)[value];
    });
}

bool equivalentConverters(const KelEncodingConverter* first, const KelEncodingConverter* second) {
    return first->getHandle() != nullptr && second->getHandle() != nullptr &&
           first->getEncodingName() == second->getEncodingName();
}
