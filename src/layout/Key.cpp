#include "layout/Key.h"

namespace layout {

namespace {

constexpr std::size_t slotCount = 512;
constexpr std::size_t noFactor = 0;

/// A number below `slotCount`; with the right factor, each key has its own.
constexpr std::size_t slotOf(std::string_view name, std::uint32_t factor) {
    const auto byte = [&](std::size_t at) { return std::uint32_t{static_cast<unsigned char>(name[at])}; };
    const std::uint32_t bytes = byte(0) << 24 | byte(name.size() / 2) << 16 | byte(name.size() - 1) << 8;
    return (bytes + static_cast<std::uint32_t>(name.size())) * factor >> 23;
}
static_assert(slotCount == std::size_t{1} << (32 - 23));

constexpr bool hasOwnSlots(std::uint32_t factor) {
    std::array<bool, slotCount> taken{};
    for (std::size_t number = 1; number < Key::names.size(); ++number) {
        bool& slot = taken[slotOf(Key::names[number], factor)];
        if (slot) {
            return false;
        }
        slot = true;
    }
    return true;
}

constexpr std::uint32_t findFactor() {
    std::uint32_t factor = 2654435769U;
    for (int tries = 0; tries < 5000; ++tries, factor = factor * 1664525U + 1013904223U) {
        if (hasOwnSlots(factor | 1U)) {
            return factor | 1U;
        }
    }
    return noFactor;
}

constexpr std::uint32_t factor = findFactor();
static_assert(factor != noFactor);

constexpr auto slots = [] {
    std::array<std::uint8_t, slotCount> numbers{};
    for (std::size_t number = 1; number < Key::names.size(); ++number) {
        numbers[slotOf(Key::names[number], factor)] = static_cast<std::uint8_t>(number);
    }
    return numbers;
}();

} // namespace

Key Key::of(std::string_view name) {
    if (name.empty()) {
        return {};
    }
    const std::size_t number = slots[slotOf(name, factor)];
    return Key(names[number] == name ? number : 0);
}

} // namespace layout
