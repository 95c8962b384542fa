#include "host/encoding/KelEncodingConverter.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <mutex>
#include <new>
#include <numeric>
#include <string>
#include <string_view>
#include <unordered_map>

namespace {

// The encodings whose converters write a byte order mark, and the encodings as which text without a mark is read.
struct MarkedEncoding {
    std::string_view canonicalName;
    const char* unmarked;
};
constexpr std::array<MarkedEncoding, 2> markedEncodings = {{{"UTF-16", "UTF-16BE"}, {"UTF-32", "UTF-32BE"}}};

// Makes ICU read its table of names while this library is loaded. If memory ran out at a later first use, ICU would
// know no name for the rest of the process.
[[maybe_unused]] const std::uint16_t namesKnown = [] {
    UErrorCode error = U_ZERO_ERROR;
    return ucnv_countAliases("UTF-8", &error);
}();

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

// Whether conversion in both directions leaves these ASCII characters unchanged.
bool standForThemselves(const KelEncodingConverter& converter, const std::string& ascii) {
    const std::u16string text(ascii.begin(), ascii.end());
    return decode(converter.getHandle(), ascii) == text && encode(converter.getWriter(), text) == ascii;
}

// Whether the meaning of a byte never depends on an ASCII byte before it.
bool readsByteByByte(const UConverter* converter) {
    switch (ucnv_getType(converter)) {
    case UCNV_SBCS:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII:
    case UCNV_UTF8:
        return true;
    default:
        return false;
    }
}

std::string allPairs(const std::string& bytes) {
    std::string pairs;
    for (const char first : bytes) {
        for (const char second : bytes) {
            pairs += first;
            pairs += second;
        }
    }
    return pairs;
}

// The plain bytes of the encodings that have been examined, by canonical name. An import opens several converters, and
// to examine the encoding of each anew would take a fifth of the import of a small file.
struct ExaminedEncodings {
    std::mutex mutex;
    std::unordered_map<std::string, std::bitset<128>> plainBytes;
};
ExaminedEncodings& examinedEncodings() {
    static ExaminedEncodings encodings;
    return encodings;
}

bool isAscii(std::string_view bytes) {
    unsigned char allBits = 0;
    for (const char byte : bytes) {
        allBits |= static_cast<unsigned char>(byte);
    }
    return allBits < 128;
}

} // namespace

void KelEncodingConverter::Close::operator()(UConverter* converter) const noexcept {
    ucnv_close(converter);
}

KelEncodingConverter::Handle KelEncodingConverter::open(const char* encodingName) {
    UErrorCode error = U_ZERO_ERROR;
    Handle opened(ucnv_open(encodingName, &error));
    if (error == U_MEMORY_ALLOCATION_ERROR) {
        throw std::bad_alloc(); // the encoding is not unknown
    }
    return opened;
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

// A byte is plain when conversion leaves it unchanged at the start of a text. If a plain byte can change the meaning of
// the next one, as in a stateful encoding, no byte counts as plain.
std::bitset<128> KelEncodingConverter::examine() const {
    std::bitset<128> found;
    std::string ascii(found.size(), '\0');
    std::iota(ascii.begin(), ascii.end(), '\0');
    const bool isByteByByte = readsByteByByte(getHandle());
    if (isByteByByte &&
        standForThemselves(*this, ascii)) { // a conversion for each byte would take a hundred times as long
        return found.set();
    }
    std::string plain;
    std::copy_if(ascii.begin(), ascii.end(), std::back_inserter(plain),
                 [&](char byte) { return standForThemselves(*this, std::string(1, byte)); });
    if (isByteByByte || standForThemselves(*this, allPairs(plain))) {
        for (const char byte : plain) {
            found.set(static_cast<std::size_t>(byte));
        }
    }
    return found;
}

std::bitset<128> KelEncodingConverter::findPlainBytes() const {
    UErrorCode error = U_ZERO_ERROR;
    const std::string name(ucnv_getName(getHandle(), &error));
    ExaminedEncodings& examined = examinedEncodings();
    const std::scoped_lock lock(examined.mutex);
    const auto known = examined.plainBytes.find(name);
    return known != examined.plainBytes.end() ? known->second
                                              : examined.plainBytes.emplace(name, examine()).first->second;
}

KelString KelEncodingConverter::getEncodingName() const {
    UErrorCode error = U_ZERO_ERROR;
    return handle_ != nullptr ? KelString(ucnv_getName(handle_.get(), &error)) : KelString();
}

bool KelEncodingConverter::isPlainText(std::string_view text) const {
    if (handle_ == nullptr) {
        return text.empty();
    }
    if (!plainBytes_) {
        plainBytes_ = findPlainBytes();
    }
    if (plainBytes_->all()) {
        return isAscii(text);
    }
    return std::all_of(text.begin(), text.end(), [&](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return value < plainBytes_->size() && (*plainBytes_)[value];
    });
}

bool equivalentConverters(const KelEncodingConverter* first, const KelEncodingConverter* second) {
    return first->getHandle() != nullptr && second->getHandle() != nullptr &&
           first->getEncodingName() == second->getEncodingName();
}
