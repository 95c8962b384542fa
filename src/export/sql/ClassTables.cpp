#include "export/sql/ClassTables.h"

#include "export/ElementIds.h"
#include "export/Omissions.h"
#include "export/modelWalk.h"
#include "export/relationships.h"
#include "export/sql/Schema.h"
#include "host/model/KelAssociation.h"
#include "host/model/KelClass.h"
#include "host/model/KelGeneralization.h"
#include "host/model/KelModel.h"

#include <algorithm>
#include <array>

namespace exporter::sql {

namespace {

struct Unstored {
    ClassKind kind;
    Omission omission;
};

/// Kinds of classes that have no rows. Those that columns use as types are enumerations only.
constexpr std::array unstoredKinds{
    Unstored{ClassKind::interface, {"interface", "interfaces", "an interface has no rows"}},
    Unstored{ClassKind::datatype, {"data type", "data types", "values have no rows"}},
    Unstored{ClassKind::primitive, {"primitive type", "primitive types", "values have no rows"}},
    Unstored{ClassKind::actor, {"actor", "actors", "what is outside has no rows"}},
    Unstored{ClassKind::boundary, {"boundary class", "boundary classes", "there are no rows of it"}},
    Unstored{ClassKind::control, {"control class", "control classes", "there are no rows of it"}},
    Unstored{ClassKind::type, {"type class", "type classes", "there are no rows of it"}},
};

constexpr Omission utility{"class utility", "class utilities", "there are no objects of it"};
constexpr Omission metaclass{"metaclass", "metaclasses", "the objects of it are classes"};
constexpr Omission templated{"template class", "template classes", "a table has no parameters"};
constexpr Omission transient{"class", "classes", "only persistent ones are tables"};
constexpr Omission ownGeneralization{"generalization", "generalizations", "the subtype is no table"};

const Omission* omissionOf(KelClassCategoryType category) {
    using enum KelClassCategoryType;
    switch (category) {
    case classUtility:
    case parameterizedClassUtility:
    case instantiatedClassUtility:
        return &utility;
    case metaclass:
        return &sql::metaclass;
    case parameterizedClass:
    case instantiatedClass:
        return &templated;
    default:
        return nullptr;
    }
}

} // namespace

class ClassTables::Collection final : public ModelVisitor {
public:
    Collection(ClassTables& owner, const ClassKinds& kinds) : owner_(owner), kinds_(kinds) {}

    void enter(const KelObject& object) override {
        if (object.elementType == KelElementType::classObject) {
            const auto& one = static_cast<const KelClass&>(object);
            owner_.classes_.push_back({.one = &one, .kind = kinds_.kindOf(one)});
        } else if (object.elementType == KelElementType::association) {
            owner_.associations_.push_back(static_cast<const KelAssociation*>(&object));
        } else if (object.elementType == KelElementType::generalization) {
            generalizations.push_back(static_cast<const KelGeneralization*>(&object));
        }
    }

    std::vector<const KelGeneralization*> generalizations;

private:
    ClassTables& owner_;
    const ClassKinds& kinds_;
};

ClassTables::ClassTables(const KelModel& model, const ClassKinds& kinds, std::string_view choice, Omissions& omissions,
                         std::vector<Decision>& decisions) {
    Collection collection(*this, kinds);
    walkModel(model, documentParts, collection);
    numbers_.reserve(classes_.size());
    for (std::uint32_t number = 0; number < count(); ++number) {
        numbers_[classes_[number].one] = number;
    }
    choose(choice, omissions, decisions);
    link(collection.generalizations, omissions);
    cutCircles(decisions);
    findRoots();
}

std::uint32_t ClassTables::numberOf(const KelClass* one) const {
    const auto found = numbers_.find(one);
    return found != numbers_.end() ? found->second : none;
}

void ClassTables::choose(std::string_view choice, Omissions& omissions, std::vector<Decision>& decisions) {
    const bool hasPersistent = std::ranges::any_of(classes_, [](const Row& row) { return row.one->isPersistent; });
    const bool arePersistent = choice == "persistent" || (choice == "auto" && hasPersistent);
    for (Row& row : classes_) {
        const Omission* omission = omissionOf(row.one->categoryType);
        const auto* kind = std::ranges::find(unstoredKinds, row.kind, &Unstored::kind);
        if (omission == nullptr && kind != unstoredKinds.end()) {
            omission = &kind->omission;
        }
        const bool isPlain = omission == nullptr && row.kind == ClassKind::classObject;
        row.isStored = isPlain && (!arePersistent || row.one->isPersistent);
        if (isPlain && !row.isStored) {
            omission = &transient;
        }
        if (omission != nullptr) {
            omissions.add(*omission);
        }
    }
    if (arePersistent) {
        decisions.push_back({Topic::tables, hasPersistent ? "only persistent classes are tables, as the model has some"
                                                          : "only persistent classes are tables, and none is"});
    }
}

void ClassTables::link(const std::vector<const KelGeneralization*>& generalizations, Omissions& omissions) {
    for (const KelGeneralization* generalization : generalizations) {
        bool isUsed = false;
        for (const Inheritance& pair : inheritancesOf(*generalization)) {
            const std::uint32_t subtype = numberOf(pair.subtype);
            const std::uint32_t supertype = numberOf(pair.supertype);
            if (subtype == none || supertype == none) {
                continue;
            }
            Row& row = classes_[subtype];
            isUsed = isUsed || row.isStored;
            if (row.isStored && isStored(supertype)) {
                row.supertypes.push_back({supertype, generalization});
            } else {
                row.unstored.push_back(supertype);
            }
        }
        if (!isUsed) {
            omissions.add(ownGeneralization);
        }
    }
    for (Row& row : classes_) { // each supertype once, the first time
        if (row.supertypes.size() < 2) {
            continue;
        }
        std::vector<Supertype> sorted = row.supertypes;
        std::ranges::stable_sort(sorted, {}, &Supertype::number);
        const auto isRepeated = [&](const Supertype& one) {
            return std::ranges::lower_bound(sorted, one.number, {}, &Supertype::number)->said != one.said;
        };
        std::erase_if(row.supertypes, isRepeated);
    }
}

void ClassTables::cutCircles(std::vector<Decision>& decisions) {
    enum class State : std::uint8_t { unseen, open, done };
    struct Step {
        std::uint32_t number;
        std::size_t next = 0;
    };
    std::vector<State> states(classes_.size(), State::unseen);
    std::vector<Step> path;
    for (std::uint32_t start = 0; start < count(); ++start) {
        if (states[start] == State::unseen) {
            states[start] = State::open;
            path.push_back({start});
        }
        while (!path.empty()) {
            Step& step = path.back();
            std::vector<Supertype>& supertypes = classes_[step.number].supertypes;
            if (step.next == supertypes.size()) {
                states[step.number] = State::done;
                path.pop_back();
                continue;
            }
            const std::uint32_t above = supertypes[step.next].number;
            if (states[above] == State::open) {
                decisions.push_back({Topic::supertype, qualifiedName(at(step.number)) + " does not inherit from " +
                                                           qualifiedName(at(above)) + ", its own subtype"});
                supertypes.erase(supertypes.begin() + static_cast<std::ptrdiff_t>(step.next));
                continue;
            }
            ++step.next;
            if (states[above] == State::unseen) {
                states[above] = State::open;
                path.push_back({above});
            }
        }
    }
}

void ClassTables::findRoots() {
    for (std::uint32_t number = 0; number < count(); ++number) {
        if (isStored(number) && !classes_[number].supertypes.empty()) {
            classes_[classes_[number].supertypes.front().number].firstSubtypes.push_back(number);
        }
        std::vector<std::uint32_t> path;
        std::uint32_t up = number;
        while (classes_[up].root == none && !classes_[up].supertypes.empty()) {
            path.push_back(up);
            up = classes_[up].supertypes.front().number;
        }
        const std::uint32_t root = classes_[up].root == none ? up : classes_[up].root;
        classes_[up].root = root;
        for (const std::uint32_t below : path) {
            classes_[below].root = root;
        }
    }
}

namespace {

/// The numbers that `next` leads to from `start`, each behind those that it leads to itself; without `start`.
template <class Next>
std::vector<std::uint32_t> reached(std::uint32_t start, const Next& next) {
    struct Step {
        std::uint32_t number;
        std::vector<std::uint32_t> left; // the last one comes first
    };
    const auto stepOf = [&](std::uint32_t number) {
        std::vector<std::uint32_t> left = next(number);
        std::ranges::reverse(left);
        return Step{number, std::move(left)};
    };
    std::vector<std::uint32_t> order;
    tsl::robin_map<std::uint32_t, bool> seen{{start, true}};
    std::vector<Step> path{stepOf(start)};
    while (!path.empty()) {
        if (path.back().left.empty()) {
            order.push_back(path.back().number);
            path.pop_back();
            continue;
        }
        const std::uint32_t number = path.back().left.back();
        path.back().left.pop_back();
        if (seen.try_emplace(number, true).second) {
            path.push_back(stepOf(number));
        }
    }
    order.pop_back();
    return order;
}

} // namespace

std::vector<std::uint32_t> ClassTables::lineOf(std::uint32_t number) const {
    std::vector<std::uint32_t> line;
    if (!classes_[number].supertypes.empty()) {
        line = reached(number, [this](std::uint32_t one) {
            std::vector<std::uint32_t> above;
            std::ranges::transform(classes_[one].supertypes, std::back_inserter(above), &Supertype::number);
            return above;
        });
    }
    line.push_back(number);
    return line;
}

std::vector<std::uint32_t> ClassTables::unstoredSupertypes(std::uint32_t number) const {
    if (classes_[number].unstored.empty()) {
        return {};
    }
    return reached(number, [&](std::uint32_t one) {
        std::vector<std::uint32_t> above = classes_[one].unstored;
        std::erase_if(above, [&](std::uint32_t other) { return other == number || isStored(other); });
        return above;
    });
}

} // namespace exporter::sql
