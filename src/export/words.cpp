#include "export/words.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace exporter {

namespace {

constexpr std::array kinds{
    ElementKind{KelElementType::model, "model"},
    ElementKind{KelElementType::designPackage, "package"},
    ElementKind{KelElementType::classObject, "class"},
    ElementKind{KelElementType::attribute, "attribute"},
    ElementKind{KelElementType::operation, "operation"},
    ElementKind{KelElementType::argument, "argument"},
    ElementKind{KelElementType::candidateKey, "key"},
    ElementKind{KelElementType::foreignKey, "key"},
    ElementKind{KelElementType::association, "association"},
    ElementKind{KelElementType::associationRole, "role"},
    ElementKind{KelElementType::generalization, "generalization"},
    ElementKind{KelElementType::realization, "realization"},
    ElementKind{KelElementType::dependency, "dependency"},
    ElementKind{KelElementType::classDiagram, "diagram"},
    ElementKind{KelElementType::baseType, "type"},
    ElementKind{KelElementType::derivedType, "type"},
};

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

const char* kindWord(KelElementType type) {
    const auto* kind = std::ranges::find(kinds, type, &ElementKind::type);
    return kind != kinds.end() ? kind->word : nullptr;
}

std::span<const ElementKind> elementKinds() {
    return kinds;
}

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
