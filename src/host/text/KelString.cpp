#include "host/text/KelString.h"

#include <bit>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::size_t longestText = std::numeric_limits<std::int32_t>::max() - 1;

char* allocate(std::size_t bytes) {
    auto* buffer = static_cast<char*>(std::malloc(bytes));
    if (buffer == nullptr) {
        throw std::bad_alloc();
    }
    return buffer;
}

void requireLength(std::size_t length) {
    if (length > longestText) {
        throw std::length_error("text longer than 2,147,483,646 bytes");
    }
}

} // namespace

char KelString::emptyPtr[1] = {'\0'};
constinit const KelString emptyString;

KelString::KelString(std::string_view text) : KelString() {
    init(text);
}

KelString::KelString(const KelString& other) : KelString() {
    init(other.view());
}

KelString::KelString(KelString&& other) noexcept : KelString() {
    *this = std::move(other);
}

KelString& KelString::operator=(const KelString& other) {
    if (this != &other) {
        init(other.view());
    }
    return *this;
}

KelString& KelString::operator=(KelString&& other) noexcept {
    if (this != &other) {
        release();
        text_ = std::exchange(other.text_, emptyPtr);
        length_ = std::exchange(other.length_, 0);
        roomExponent_ = std::exchange(other.roomExponent_, 0);
        place_ = std::exchange(other.place_, Place::nowhere);
    }
    return *this;
}

KelString::~KelString() {
    release();
}

std::size_t KelString::room() const noexcept {
    return roomExponent_ != 0 ? std::size_t{1} << roomExponent_ : 0;
}

void KelString::release() noexcept {
    if (place_ == Place::atStart) {
        std::free(text_);
    } else if (place_ == Place::atEnd) {
        std::free(text_ + length_ + 1 - room());
    }
}

void KelString::take(char* text, std::size_t length, int exponent, Place place) noexcept {
    release();
    text_ = text;
    length_ = static_cast<std::int32_t>(length);
    roomExponent_ = static_cast<std::uint16_t>(exponent);
    place_ = place;
}

void KelString::init(const char* text, int length) {
    if (text == nullptr) {
        empty();
        return;
    }
    init(length < 0 ? std::string_view(text) : std::string_view(text, static_cast<std::size_t>(length)));
}

void KelString::init(std::string_view text) {
    if (text.empty()) {
        empty();
        return;
    }
    requireLength(text.size());
    char* buffer = allocate(text.size() + 1);
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
    take(buffer, text.size(), 0, Place::atStart);
}

void KelString::empty() noexcept {
    take(emptyPtr, 0, 0, Place::nowhere);
}

KelString KelString::mid(unsigned int start, unsigned int count) const {
    const std::string_view whole = view();
    return start < whole.size() ? KelString(whole.substr(start, count)) : KelString();
}

KelString& KelString::add(const char* first, ...) {
    std::va_list rest;
    va_start(rest, first);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the analysis loses sight of va_start
    for (const char* text = first; text != nullptr; text = va_arg(rest, const char*)) {
        append(text);
    }
    va_end(rest);
    return *this;
}

KelString& KelString::append(std::string_view text) {
    if (text.empty()) {
        return *this;
    }
    const auto oldLength = static_cast<std::size_t>(length_);
    const std::size_t newLength = oldLength + text.size();
    requireLength(newLength);
    if (place_ == Place::atStart && newLength < room()) {
        std::memmove(text_ + oldLength, text.data(), text.size());
        length_ = static_cast<std::int32_t>(newLength);
    } else {
        const int exponent = static_cast<int>(std::bit_width(newLength));
        char* buffer = allocate(std::size_t{1} << exponent);
        std::memcpy(buffer, text_, oldLength);
        std::memcpy(buffer + oldLength, text.data(), text.size());
        take(buffer, newLength, exponent, Place::atStart);
    }
    text_[newLength] = '\0';
    return *this;
}

KelString& KelString::prepend(std::string_view text) {
    if (text.empty()) {
        return *this;
    }
    if (isEmpty()) { // most texts do not change later: no spare room
        init(text);
        return *this;
    }
    const auto oldLength = static_cast<std::size_t>(length_);
    const std::size_t newLength = oldLength + text.size();
    requireLength(newLength);
    if (place_ == Place::atEnd && newLength < room()) {
        text_ -= text.size();
        std::memmove(text_, text.data(), text.size());
        length_ = static_cast<std::int32_t>(newLength);
    } else {
        const int exponent = static_cast<int>(std::bit_width(newLength));
        char* buffer = allocate(std::size_t{1} << exponent);
        char* start = buffer + (std::size_t{1} << exponent) - newLength - 1;
        std::memcpy(start, text.data(), text.size());
        std::memcpy(start + text.size(), text_, oldLength + 1);
        take(start, newLength, exponent, Place::atEnd);
    }
    return *this;
}

KelString operator+(const KelString& left, const KelString& right) {
    KelString sum(left);
    sum += right;
    return sum;
}
