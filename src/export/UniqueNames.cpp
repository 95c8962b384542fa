#include "export/UniqueNames.h"

#include "text/ascii.h"
#include "text/escape.h"
#include "text/utf8.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>

namespace exporter {

namespace {

std::string folded(std::string_view name) {
    if (text::isAscii(name)) {
        return text::lowerCase(name);
    }
    std::string result;
    for (std::size_t at = 0; at < name.size();) {
        const UChar32 character = u_foldCase(text::nextCharacter(name, at), U_FOLD_CASE_DEFAULT);
        std::array<char, U8_MAX_LENGTH> bytes{};
        std::size_t length = 0;
        U8_APPEND_UNSAFE(bytes.data(), length, character);
        result.append(bytes.data(), length);
    }
    return result;
}

constexpr std::size_t blockSize = 16; // of bytes that are folded together

/// What `folded` returns, which is in `buffer` if it fits there.
std::string_view foldedIn(std::span<char> buffer, std::string_view name, std::string& longer) {
    if (name.size() > buffer.size() || !text::isAscii(name)) {
        return longer = folded(name);
    }
    std::size_t at = 0;
    for (; at + blockSize <= name.size(); at += blockSize) {
        for (std::size_t index = 0; index < blockSize; ++index) { // which the compiler does at once
            buffer[at + index] = text::lower(name[at + index]);
        }
    }
    std::transform(name.begin() + static_cast<std::ptrdiff_t>(at), name.end(),
                   buffer.begin() + static_cast<std::ptrdiff_t>(at), text::lower);
    return {buffer.data(), name.size()};
}

constexpr std::size_t usualLength = 128; // most names are as short, and not reserved

bool isReserved(std::string_view name, const NameRules& rules) {
    if (rules.reserved.empty()) {
        return false;
    }
    std::array<char, usualLength> buffer;
    std::string longer;
    return std::ranges::binary_search(rules.reserved, foldedIn(buffer, name, longer));
}

/// A bit for the length, of all great ones the same.
std::uint64_t lengthBit(std::string_view text) {
    constexpr std::size_t most = 63;
    return std::uint64_t{1} << std::min(text.size(), most);
}

/// Whether the name, which is valid UTF-8, needs no quotes for its characters.
bool isPlain(std::string_view name, const NameRules& rules) {
    for (std::size_t at = 0; at < name.size();) {
        const bool isFirst = at == 0;
        if (!rules.allows(text::nextCharacter(name, at), isFirst)) {
            return false;
        }
    }
    return !name.empty();
}

/// The text with "_" for everything that no name may hold, of any length.
std::string allowed(std::string_view text, const NameRules& rules) {
    const bool isQuotable = rules.quote != 0;
    std::string name;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const int character = text::nextCharacter(text, at);
        const bool isKept =
            character >= 0 && (isQuotable ? text::isPrintable(character) : rules.allows(character, false));
        if (start == 0 && isKept && !isQuotable && !rules.allows(character, true)) {
            name += '_';
        }
        name += isKept ? text.substr(start, at - start) : "_";
    }
    if (name.empty()) {
        name = "_";
    }
    while (!isQuotable && isReserved(name, rules)) {
        name += '_';
    }
    return name;
}

std::string hashOf(std::string_view text) {
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016" PRIx64, XXH64(text.data(), text.size(), 0));
    return std::string(digits.data(), 8);
}

/// The characters of a name that fit into so many bytes.
std::string_view cut(std::string_view name, std::size_t longest) {
    std::size_t end = std::min(longest, name.size());
    while (end > 0 && end < name.size() && U8_IS_TRAIL(name[end])) {
        --end;
    }
    return name.substr(0, end);
}

/// The name and the ending, cut to the longest that is allowed.
std::string limited(std::string_view name, const std::string& ending, std::string_view text, const NameRules& rules) {
    if (name.size() + ending.size() <= rules.longest) {
        return std::string(name) + ending;
    }
    const std::string tail = "_" + hashOf(text) + ending;
    return std::string(cut(name, rules.longest - tail.size())) + tail;
}

} // namespace

/// The name among those that are taken, and whether it was not.
std::pair<UniqueNames::Taken::iterator, bool> UniqueNames::take(std::string_view name) {
    const std::span<char> buffer(static_cast<char*>(keys_.allocate(name.size() + 1, 1)), name.size());
    std::string longer;
    std::string_view key = rules_.foldsCase ? foldedIn(buffer, name, longer) : name;
    if (key.data() != buffer.data()) {
        char* const kept = static_cast<char*>(keys_.allocate(key.size() + 1, 1));
        std::ranges::copy(key, kept);
        key = {kept, key.size()};
    }
    return taken_.try_emplace(key, 1);
}

std::string UniqueNames::make(std::string_view text) {
    const bool isAllowed = rules_.quote != 0 && !text.empty() && text::isPrintableAscii(text);
    const std::string changed = isAllowed ? std::string() : allowed(text, rules_);
    const std::string_view name = isAllowed ? text : std::string_view(changed);
    std::string made = limited(name, "", text, rules_);
    const auto [first, isNew] = take(made);
    if (isNew) {
        return made;
    }
    hasNumbers_ = true;
    const std::string_view taken = first->first; // which outlasts the place in the table
    std::uint64_t number = first->second;
    for (bool isFree = false; !isFree;) {
        made = limited(name, "_" + std::to_string(++number), text, rules_);
        isFree = (rules_.quote != 0 || !isReserved(made, rules_)) && take(made).second;
    }
    taken_[taken] = number;
    return made;
}

void UniqueNames::clear() {
    constexpr std::size_t most = 64; // places to be cleared; more are given back
    if (taken_.bucket_count() > most) {
        taken_ = Taken();
        taken_.max_load_factor(mostLoad);
    } else {
        taken_.clear();
    }
    keys_.release();
    hasNumbers_ = false;
}

Quoting::Quoting(const NameRules& rules) : rules_(rules) {
    for (std::size_t byte = 0; byte < asciiCount; ++byte) {
        isAllowed_[byte] = rules.allows(static_cast<int>(byte), false);
        isAllowedFirst_[byte] = rules.allows(static_cast<int>(byte), true);
    }
    for (const std::string_view word : rules.reserved) {
        reserved_[static_cast<unsigned char>(word.front())] |= lengthBit(word);
    }
}

bool Quoting::needsQuotes(std::string_view name) const {
    if (rules_.quote == 0) {
        return false;
    }
    if (name.empty() || !text::isAscii(name)) {
        return exporter::needsQuotes(name, rules_);
    }
    const auto isAllowed = [this](char byte) { return isAllowed_[static_cast<unsigned char>(byte)]; };
    if (!isAllowedFirst_[static_cast<unsigned char>(name.front())] || !std::ranges::all_of(name.substr(1), isAllowed)) {
        return true;
    }
    const auto first = static_cast<unsigned char>(text::lower(name.front()));
    return (reserved_[first] & lengthBit(name)) != 0 && isReserved(name, rules_);
}

bool needsQuotes(std::string_view name, const NameRules& rules) {
    return rules.quote != 0 && (!isPlain(name, rules) || isReserved(name, rules));
}

std::string quotedName(std::string_view name, const NameRules& rules) {
    if (!needsQuotes(name, rules)) {
        return std::string(name);
    }
    std::string result;
    result.reserve(name.size() + 2);
    result += rules.quote;
    for (const char byte : name) {
        result.append(byte == rules.quote ? 2 : 1, byte);
    }
    return result + rules.quote;
}

} // namespace exporter
