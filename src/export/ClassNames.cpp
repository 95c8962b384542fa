#include "export/ClassNames.h"

#include "export/ElementIds.h"
#include "export/modelWalk.h"
#include "host/model/KelClass.h"
#include "host/model/KelModel.h"
#include "host/model/KelType.h"

#include <algorithm>
#include <tuple>

namespace exporter {

namespace {

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

ClassNames::ClassNames(const KelModel& model) {
    ClassList list;
    walkModel(model, documentParts, list);
    byEnd_.reserve(list.classes.size());
    for (const KelClass* one : list.classes) {
        std::string name = qualifiedName(*one);
        std::ranges::reverse(name);
        byEnd_.push_back({std::move(name), one});
        byName_[one->getName().view()].push_back(one);
    }
    std::ranges::sort(byEnd_, {}, &ByEnd::reversed);
}

const KelClass* ClassNames::find(std::string_view name) const {
    if (name.empty()) {
        return nullptr;
    }
    std::string reversed(name.rbegin(), name.rend());
    const auto whole = std::ranges::lower_bound(byEnd_, reversed, {}, &ByEnd::reversed);
    const auto isWhole = [&](auto at) { return at != byEnd_.end() && at->reversed == reversed; };
    if (isWhole(whole)) {
        return isWhole(whole + 1) ? nullptr : whole->one;
    }
    if (name.find("::") != std::string_view::npos) {
        reversed += "::";
        const auto isBefore = [&](std::string_view one, std::string_view end) {
            return one.substr(0, end.size()) < end;
        };
        const auto first = std::ranges::lower_bound(byEnd_, std::string_view(reversed), isBefore, &ByEnd::reversed);
        const auto matches = [&](auto at) { return at != byEnd_.end() && at->reversed.starts_with(reversed); };
        if (matches(first)) {
            return matches(first + 1) ? nullptr : first->one;
        }
    }
    const auto found = byName_.find(name);
    return found != byName_.end() && found->second.size() == 1 ? found->second.front() : nullptr;
}

const KelClass* ClassNames::find(const KelType* type) const {
    return type != nullptr ? find(type->getName().view()) : nullptr;
}

std::vector<const KelClass*> ClassNames::named(std::string_view name) const {
    const auto found = byName_.find(name);
    return found != byName_.end() ? found->second : std::vector<const KelClass*>();
}

} // namespace exporter
