#include "export/ClassNames.h"

#include "export/ElementIds.h"
#include "export/modelWalk.h"
#include "host/model/KelClass.h"
#include "host/model/KelType.h"

#include <algorithm>
#include <utility>

namespace exporter {

namespace {

constexpr std::string_view separator = "::";

/// Collects the classes in the order of the JSON document.
class ClassList final : public ModelVisitor {
public:
    void enter(const KelObject& object) override {
        if (object.elementType == KelElementType::classObject) {
            classes.push_back(static_cast<const KelClass*>(&object));
        }
    }
    std::vector<const KelClass*> classes;
};

} // namespace

void ClassNames::collect() const {
    ClassList list;
    walkModel(model_, documentParts, list);
    classes_.reserve(list.classes.size());
    byName_.reserve(list.classes.size());
    for (const KelClass* one : list.classes) {
        const auto index = static_cast<Index>(classes_.size());
        const auto [chain, isNew] = byName_.try_emplace(one->getName().view(), Chain{index, index});
        if (!isNew) {
            classes_[std::exchange(chain.value().last, index)].next = index;
        }
        classes_.push_back({one});
    }
}

void ClassNames::sortByEnd() const {
    byEnd_.reserve(classes_.size());
    std::vector<std::size_t> ends;
    for (const Named& named : classes_) {
        const std::string name = qualifiedName(*named.one);
        reversedNames_.append(name.rbegin(), name.rend());
        ends.push_back(reversedNames_.size());
    }
    std::size_t begin = 0;
    for (std::size_t index = 0; index < classes_.size(); ++index) {
        byEnd_.push_back({std::string_view(reversedNames_).substr(begin, ends[index] - begin), classes_[index].one});
        begin = ends[index];
    }
    std::ranges::sort(byEnd_, {}, &ByEnd::reversed);
}

const KelClass* ClassNames::find(std::string_view name) const {
    if (name.empty()) {
        return nullptr;
    }
    std::call_once(isCollected_, [this] { collect(); });
    // The name of a package and "::" are before every class's name.
    if (name.find(separator) != std::string_view::npos) {
        std::call_once(isSorted_, [this] { sortByEnd(); });
        std::string reversed(name.rbegin(), name.rend());
        const auto whole = std::ranges::lower_bound(byEnd_, std::string_view(reversed), {}, &ByEnd::reversed);
        const auto isWhole = [&](auto at) { return at != byEnd_.end() && at->reversed == reversed; };
        if (isWhole(whole)) {
            return isWhole(whole + 1) ? nullptr : whole->one;
        }
        reversed += separator;
        const auto isBefore = [](std::string_view one, std::string_view end) {
            return one.substr(0, end.size()) < end;
        };
        const auto first = std::ranges::lower_bound(byEnd_, std::string_view(reversed), isBefore, &ByEnd::reversed);
        const auto matches = [&](auto at) { return at != byEnd_.end() && at->reversed.starts_with(reversed); };
        if (matches(first)) {
            return matches(first + 1) ? nullptr : first->one;
        }
    }
    const auto found = byName_.find(name);
    return found != byName_.end() && found->second.first == found->second.last ? classes_[found->second.first].one
                                                                               : nullptr;
}

const KelClass* ClassNames::find(const KelType* type) const {
    return type != nullptr ? find(type->getName().view()) : nullptr;
}

std::vector<const KelClass*> ClassNames::named(std::string_view name) const {
    std::call_once(isCollected_, [this] { collect(); });
    std::vector<const KelClass*> classes;
    const auto found = byName_.find(name);
    for (Index at = found != byName_.end() ? found->second.first : none; at != none; at = classes_[at].next) {
        classes.push_back(classes_[at].one);
    }
    return classes;
}

} // namespace exporter
