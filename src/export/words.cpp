#include "export/words.h"

#include <array>
#include <cstddef>
#include <span>

namespace exporter {

namespace {

constexpr std::array visibilities{"public", "protected", "private", "implementation"};
constexpr std::array containments{"byValue", "byReference"};
constexpr std::array<const char*, 10> categories{
    nullptr,
    "class",
    "parameterizedClass",
    "instantiatedClass",
    "classUtility",
    "parameterizedClassUtility",
    "instantiatedClassUtility",
    nullptr,
    "metaclass",
    "interface",
};

const char* wordOf(std::span<const char* const> words, std::int32_t number) {
    const auto index = static_cast<std::size_t>(number);
    return number >= 0 && index < words.size() ? words[index] : nullptr;
}

} // namespace

const char* visibilityWord(std::int32_t visibility) {
    return wordOf(visibilities, visibility);
}

const char* containmentWord(std::int32_t containment) {
    return wordOf(containments, containment);
}

const char* categoryWord(KelClassCategoryType category) {
    return wordOf(categories, static_cast<std::int32_t>(category));
}

} // namespace exporter
