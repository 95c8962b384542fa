#include "host/text/KelString.h"

#include <atomic>
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

// The use of a buffer with room to grow. Such a one has a single owner.
constexpr std::uint32_t growsBit = 1U << 31;
constexpr std::uint32_t atEndBit = 1U << 30; // its text ends where it ends; else it begins where it begins
constexpr std::uint32_t exponentBits = 63;   // it has 2^exponent bytes, with the head

constexpr std::uint32_t mostSharers = 1U << 29; // far from growsBit, however many threads are sharing just now

void requireLength(std::size_t length) {
    if (length > longestText) {
        throw std::length_error("text longer than 2,147,483,646 bytes");
    }
}

char* allocate(std::size_t bytes) {
    auto* buffer = static_cast<char*>(std::malloc(bytes));
    if (buffer == nullptr) {
        throw std::bad_alloc();
    }
    return buffer;
}

/// Makes a head before the text, and a NUL behind it.
template <class Head>
void frame(char* text, std::size_t length, std::uint32_t use) noexcept {
    const Head head{static_cast<std::uint32_t>(length), use};
    std::memcpy(text - sizeof head, &head, sizeof head);
    text[length] = '\0';
}

/// The number of owners is changed by several threads, in a buffer that begins with its head and is aligned thus.
std::atomic_ref<std::uint32_t> useOf(char* text) noexcept {
    return std::atomic_ref<std::uint32_t>(*reinterpret_cast<std::uint32_t*>(text - sizeof(std::uint32_t)));
}

constexpr bool grows(std::uint32_t use) noexcept {
    return (use & growsBit) != 0;
}

constexpr std::size_t roomOf(std::uint32_t use) noexcept {
    return std::size_t{1} << (use & exponentBits);
}

} // namespace

char KelString::emptyPtr[1] = {'\0'};
constinit const KelString emptyString;

KelString::KelString(std::string_view text) : KelString() {
    init(text);
}

KelString::KelString(const KelString& other) : text_(other.share()) {}

KelString& KelString::operator=(const KelString& other) {
    if (this != &other) {
        take(other.share());
    }
    return *this;
}

std::uint32_t KelString::use() const noexcept {
    if (reinterpret_cast<std::uintptr_t>(text_) % alignof(Head) == 0) {
        return useOf(text_).load(std::memory_order_acquire);
    }
    std::uint32_t use = 0; // of a text that has grown at its start
    std::memcpy(&use, text_ - sizeof use, sizeof use);
    return use;
}

char* KelString::share() const {
    if (isEmpty()) {
        return text_;
    }
    const std::uint32_t now = use();
    if (!grows(now) && now < mostSharers) {
        useOf(text_).fetch_add(1, std::memory_order_relaxed);
        return text_;
    }
    KelString copy(view());
    return std::exchange(copy.text_, emptyPtr);
}

void KelString::releaseBuffer() noexcept {
    const std::uint32_t now = use();
    if (grows(now) && (now & atEndBit) != 0) {
        std::free(text_ + size() + 1 - roomOf(now));
    } else if (grows(now) || now == 0 || useOf(text_).fetch_sub(1, std::memory_order_acq_rel) == 0) {
        std::free(text_ - sizeof(Head));
    }
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
    char* copy = allocate(sizeof(Head) + text.size() + 1) + sizeof(Head);
    std::memcpy(copy, text.data(), text.size());
    frame<Head>(copy, text.size(), 0);
    take(copy);
}

void KelString::empty() noexcept {
    take(emptyPtr);
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
    if (isEmpty()) { // most texts do not change later: no spare room
        init(text);
        return *this;
    }
    const std::size_t oldLength = size();
    const std::size_t newLength = oldLength + text.size();
    requireLength(newLength);
    const std::uint32_t now = use();
    if (grows(now) && (now & atEndBit) == 0 && sizeof(Head) + newLength < roomOf(now)) {
        std::memmove(text_ + oldLength, text.data(), text.size());
        frame<Head>(text_, newLength, now);
    } else {
        const int exponent = static_cast<int>(std::bit_width(sizeof(Head) + newLength));
        char* longer = allocate(std::size_t{1} << exponent) + sizeof(Head);
        std::memcpy(longer, text_, oldLength);
        std::memcpy(longer + oldLength, text.data(), text.size());
        frame<Head>(longer, newLength, growsBit | static_cast<std::uint32_t>(exponent));
        take(longer);
    }
    return *this;
}

KelString& KelString::prepend(std::string_view text) {
    if (text.empty()) {
        return *this;
    }
    if (isEmpty()) {
        init(text);
        return *this;
    }
    const std::size_t oldLength = size();
    const std::size_t newLength = oldLength + text.size();
    requireLength(newLength);
    const std::uint32_t now = use();
    if (grows(now) && (now & atEndBit) != 0 && sizeof(Head) + newLength < roomOf(now)) {
        text_ -= text.size();
        std::memmove(text_, text.data(), text.size());
        frame<Head>(text_, newLength, now);
    } else {
        const int exponent = static_cast<int>(std::bit_width(sizeof(Head) + newLength));
        const std::size_t room = std::size_t{1} << exponent;
        char* longer = allocate(room) + room - newLength - 1;
        std::memcpy(longer, text.data(), text.size());
        std::memcpy(longer + text.size(), text_, oldLength);
        frame<Head>(longer, newLength, growsBit | atEndBit | static_cast<std::uint32_t>(exponent));
        take(longer);
    }
    return *this;
}

KelString operator+(const KelString& left, const KelString& right) {
    KelString sum(left);
    sum += right;
    return sum;
}
