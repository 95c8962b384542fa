#include "export/ClassKind.h"

#include "host/model/KelClass.h"
#include "text/ascii.h"

#include <algorithm>
#include <array>

namespace exporter {

namespace {

struct Word {
    std::string_view word;
    ClassKind kind;
};

constexpr std::array kindWords{
    Word{"class", ClassKind::classObject},
    Word{"interface", ClassKind::interface},
    Word{"enumeration", ClassKind::enumeration},
    Word{"datatype", ClassKind::datatype},
    Word{"primitive", ClassKind::primitive},
    Word{"actor", ClassKind::actor},
    Word{"boundary", ClassKind::boundary},
    Word{"control", ClassKind::control},
    Word{"type", ClassKind::type},
};

constexpr std::array stereotypeWords{
    Word{"interface", ClassKind::interface}, Word{"enumeration", ClassKind::enumeration},
    Word{"enum", ClassKind::enumeration},    Word{"datatype", ClassKind::datatype},
    Word{"data type", ClassKind::datatype},  Word{"struct", ClassKind::datatype},
    Word{"primitive", ClassKind::primitive}, Word{"typedef", ClassKind::primitive},
    Word{"actor", ClassKind::actor},         Word{"business actor", ClassKind::actor},
    Word{"boundary", ClassKind::boundary},   Word{"control", ClassKind::control},
    Word{"type", ClassKind::type},
};

} // namespace

std::string_view classKindWord(ClassKind kind) {
    return std::ranges::find(kindWords, kind, &Word::kind)->word;
}

ClassKinds::ClassKinds(const std::vector<std::pair<std::string, std::string>>& added) {
    for (const auto& [stereotype, word] : added) {
        stereotypes_.emplace_back(foldedStereotype(stereotype), std::ranges::find(kindWords, word, &Word::word)->kind);
    }
    std::ranges::reverse(stereotypes_); // the last setting is found first
    for (const Word& row : stereotypeWords) {
        stereotypes_.emplace_back(row.word, row.kind);
    }
}

const std::pair<std::string, ClassKind>* ClassKinds::find(const KelClass& one) const {
    const std::string stereotype = foldedStereotype(one.stereotype.view());
    const auto found = std::ranges::find(stereotypes_, stereotype, &std::pair<std::string, ClassKind>::first);
    return found != stereotypes_.end() ? &*found : nullptr;
}

ClassKind ClassKinds::kindOf(const KelClass& one) const {
    if (const auto* known = find(one)) {
        return known->second;
    }
    return one.categoryType == KelClassCategoryType::interface ? ClassKind::interface : ClassKind::classObject;
}

bool ClassKinds::isNamedByStereotype(const KelClass& one) const {
    return find(one) != nullptr;
}

std::string foldedStereotype(std::string_view text) {
    return text::lowerCase(text::trimmed(text));
}

} // namespace exporter
