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
#include <array>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <vector>

namespace exporter {

namespace {

constexpr std::string_view separator = "::";

/// The name as outputs show it. `repaired` holds it if it is not the name itself.
std::string_view shownName(const KelObject& element, std::string& repaired) {
    const std::string_view name = element.getName().view();
    return text::isValidUtf8(name) ? name : repaired = text::repairedUtf8(name);
}

/// Hashes and compares texts as if they were in lower case.
struct FoldedHash {
    std::size_t operator()(std::string_view quid) const {
        std::array<char, 32> folded;
        if (quid.size() > folded.size()) {
            return KelTextHash()(text::lowerCase(quid));
        }
        std::ranges::transform(quid, folded.begin(), text::lower);
        return KelTextHash()({folded.data(), quid.size()});
    }
};
struct FoldedEqual {
    bool operator()(std::string_view one, std::string_view other) const {
        return std::ranges::equal(one, other, {}, text::lower, text::lower);
    }
};

std::vector<std::string_view> kindWords() {
    std::vector<std::string_view> words;
    std::ranges::transform(elementKinds(), std::back_inserter(words), &ElementKind::word);
    return words;
}

/// The kind of an element, as an index into the kinds.
std::size_t kindOf(const KelObject& element) {
    const auto kind = std::ranges::find(elementKinds(), element.elementType, &ElementKind::type);
    return static_cast<std::size_t>(kind - elementKinds().begin());
}

bool isPackageOrClass(const KelObject& object) {
    return object.elementType == KelElementType::designPackage || object.elementType == KelElementType::classObject;
}

} // namespace

std::string qualifiedName(const KelObject& element) {
    std::vector<const KelObject*> path{&element};
    for (const KelObject* owner = element.getParent(); owner != nullptr && owner->elementType != KelElementType::model;
         owner = owner->getParent()) {
        path.push_back(owner);
    }
    std::string name;
    std::string repaired;
    for (auto object = path.rbegin(); object != path.rend(); ++object) {
        name.append(object != path.rbegin() ? separator : "").append(shownName(**object, repaired));
    }
    return name;
}

/// Makes the ids in two passes over the elements, as only the first shows which quids several elements have.
class ElementIds::Maker final : private ModelVisitor {
public:
    Maker(ElementIds& ids, const KelModel& model, const source::SourceMap* source, Of of)
        : ids_(ids), source_(source), of_(of) {
        walkModel(model, of == Of::all || source != nullptr ? documentParts : packageParts, *this);
        ids_.ids_.reserve(elements_.size());
        for (const Element& element : elements_) {
            giveId(element);
        }
    }

private:
    struct Element {
        const KelObject* object;
        std::string_view quid; // empty: none that can be part of an id
        std::size_t depth;     // the number of its owners
    };

    void enter(const KelObject& object) override {
        const source::SourcePlace* place = source_ != nullptr ? source_->find(object) : nullptr;
        const bool hasQuid = place != nullptr && mayBeId(place->quid);
        const std::string_view quid = hasQuid ? place->quid : std::string_view();
        if (hasQuid) {
            const auto [holder, isNew] = quids_.try_emplace(quid, &object);
            if (!isNew && holder.value() != &object) { // an argument may have two owners
                holder.value() = nullptr;
            }
        }
        const std::size_t depth = depth_++;
        if (of_ == Of::all || object.elementType == KelElementType::model || isPackageOrClass(object)) {
            elements_.push_back({&object, quid, depth});
        }
    }
    void leave(const KelObject& /*object*/) override { --depth_; }

    void giveId(const Element& element) {
        const auto [id, isNew] = ids_.ids_.try_emplace(element.object);
        names_.leaveTo(element.depth > 0 ? element.depth - 1 : 0); // without the model
        if (isNew) {
            const bool hasOwnQuid = !element.quid.empty() && quids_.at(element.quid) != nullptr;
            id.value() = hasOwnQuid
                             ? quidId(element.quid)
                             : nameId(names_.take(kindOf(*element.object), shownName(*element.object, repaired_)));
        }
        if (element.depth > 0) {
            names_.enter(shownName(*element.object, repaired_));
        }
    }

    std::string_view quidId(std::string_view quid) {
        char* const text = newText(1 + quid.size());
        *text = 'q';
        std::ranges::transform(quid, text + 1, text::lower);
        return {text, 1 + quid.size()};
    }

    std::string_view nameId(std::uint64_t hash) {
        const std::string id = idOfName(hash);
        char* const text = newText(id.size());
        std::ranges::copy(id, text);
        return {text, id.size()};
    }

    char* newText(std::size_t size) { return static_cast<char*>(ids_.texts_.allocate(size, 1)); }

    ElementIds& ids_;
    const source::SourceMap* source_;
    Of of_;
    std::vector<Element> elements_; // in the order of the walk
    std::size_t depth_ = 0;
    /// The element that alone has the quid; null: there are several.
    tsl::robin_map<std::string_view, const KelObject*, FoldedHash, FoldedEqual> quids_;
    NameIds names_{kindWords()};
    std::string repaired_;
};

ElementIds::ElementIds(const KelModel& model, const source::SourceMap* source, Of of) {
    const Maker maker(*this, model, source, of);
}

} // namespace exporter
