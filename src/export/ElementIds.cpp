#include "export/ElementIds.h"

#include "export/NameIds.h"
#include "export/modelWalk.h"
#include "export/words.h"
#include "host/model/KelModel.h"
#include "host/text/KelTextHash.h"
#include "source/SourceMap.h"
#include "text/ascii.h"
#include "text/utf8.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

namespace exporter {

namespace {

constexpr std::string_view separator = "::";

/// The name as outputs show it.
std::string shownName(const KelObject& element) {
    return text::repairedUtf8(element.getName().view());
}

/// The quids of a model's elements, in lower case, with their owners.
class Quids final : private ModelVisitor {
public:
    Quids(const KelModel& model, const source::SourceMap* source) : source_(source) {
        if (source_ != nullptr) {
            walkModel(model, documentParts, *this);
        }
    }

    /// The quid that only this element has, as the source has it, or null.
    [[nodiscard]] const std::string* ownOf(const KelObject& element) const {
        const std::string* quid = quidOf(element);
        return quid != nullptr && owners_.at(text::lowerCase(*quid)) == &element ? quid : nullptr;
    }

private:
    void enter(const KelObject& element) override {
        if (const std::string* quid = quidOf(element)) {
            const auto [owner, isNew] = owners_.try_emplace(text::lowerCase(*quid), &element);
            if (!isNew && owner.value() != &element) { // an argument may have two owners
                owner.value() = nullptr;
            }
        }
    }

    [[nodiscard]] const std::string* quidOf(const KelObject& element) const {
        const source::SourcePlace* place = source_ != nullptr ? source_->find(element) : nullptr;
        return place != nullptr && mayBeId(place->quid) ? &place->quid : nullptr;
    }

    const source::SourceMap* source_;
    tsl::robin_map<std::string, const KelObject*, KelTextHash> owners_; // null: several elements have it
};

} // namespace

std::string qualifiedName(const KelObject& element) {
    std::vector<const KelObject*> path{&element};
    for (const KelObject* owner = element.getParent(); owner != nullptr && owner->elementType != KelElementType::model;
         owner = owner->getParent()) {
        path.push_back(owner);
    }
    std::string name;
    for (auto object = path.rbegin(); object != path.rend(); ++object) {
        name.append(object != path.rbegin() ? separator : "").append(shownName(**object));
    }
    return name;
}

class ElementIds::Maker final : private ModelVisitor {
public:
    Maker(ElementIds& ids, const KelModel& model, const source::SourceMap* source)
        : ids_(ids), quids_(model, source), names_(kindWords()) {
        walkModel(model, documentParts, *this);
    }

private:
    void enter(const KelObject& element) override {
        if (const auto [id, isNew] = ids_.ids_.try_emplace(&element); isNew) { // an argument may have two owners
            id.value().quid = quids_.ownOf(element);
            if (id.value().quid == nullptr) {
                const auto kind = std::ranges::find(elementKinds(), element.elementType, &ElementKind::type);
                id.value().hash =
                    names_.take(static_cast<std::size_t>(kind - elementKinds().begin()), shownName(element));
            }
        }
        if (element.elementType != KelElementType::model) {
            names_.enter(shownName(element));
        }
    }
    void leave(const KelObject& element) override {
        if (element.elementType != KelElementType::model) {
            names_.leave();
        }
    }

    static std::vector<std::string_view> kindWords() {
        std::vector<std::string_view> words;
        std::ranges::transform(elementKinds(), std::back_inserter(words), &ElementKind::word);
        return words;
    }

    ElementIds& ids_;
    Quids quids_;
    NameIds names_;
};

ElementIds::ElementIds(const KelModel& model, const source::SourceMap* source) {
    const Maker maker(*this, model, source);
}

std::string ElementIds::idOf(const KelObject& element) const {
    const auto found = ids_.find(&element);
    if (found == ids_.end()) {
        return {};
    }
    return found->second.quid != nullptr ? idOfQuid(*found->second.quid) : idOfName(found->second.hash);
}

} // namespace exporter
