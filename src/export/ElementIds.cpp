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
#include <tsl/robin_set.h>
#include <vector>

namespace exporter {

namespace {

constexpr std::string_view separator = "::";

/// The name as outputs show it. `repaired` holds it if it is not the name itself.
std::string_view shownName(const KelObject& element, std::string& repaired) {
    const std::string_view name = element.getName().view();
    return text::isValidUtf8(name) ? name : repaired = text::repairedUtf8(name);
}

/// Hashes and compares the quids of places as if they were in lower case.
struct QuidHash {
    std::size_t operator()(const source::SourcePlace* place) const {
        std::array<char, 32> folded;
        const std::string_view quid = place->quid;
        if (quid.size() > folded.size()) {
            return KelTextHash()(text::lowerCase(quid));
        }
        std::ranges::transform(quid, folded.begin(), text::lower);
        return KelTextHash()({folded.data(), quid.size()});
    }
};
struct QuidEqual {
    bool operator()(const source::SourcePlace* one, const source::SourcePlace* other) const {
        return one == other || std::ranges::equal(one->quid, other->quid, {}, text::lower, text::lower);
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

void appendQualifiedName(const KelObject& element, std::string& text) {
    const auto ownerOf = [](const KelObject& object) {
        const KelObject* owner = object.getParent();
        return owner != nullptr && owner->elementType != KelElementType::model ? owner : nullptr;
    };
    std::size_t size = 0;
    bool isValid = true;
    std::string repaired;
    for (const KelObject* object = &element; object != nullptr; object = ownerOf(*object)) {
        const std::string_view name = shownName(*object, repaired);
        isValid = isValid && name.data() == object->getName().view().data();
        size += (object != &element ? separator.size() : 0) + name.size();
    }
    text.resize(text.size() + size);
    // From the end, as an element knows its owner alone.
    std::size_t end = text.size();
    const auto prepend = [&](std::string_view part) { part.copy(text.data() + (end -= part.size()), part.size()); };
    for (const KelObject* object = &element; object != nullptr; object = ownerOf(*object)) {
        if (object != &element) {
            prepend(separator);
        }
        prepend(isValid ? object->getName().view() : shownName(*object, repaired));
    }
}

std::string qualifiedName(const KelObject& element) {
    std::string name;
    appendQualifiedName(element, name);
    return name;
}

/// Makes the ids in two passes over the elements, as only the first shows which quids several elements have.
class ElementIds::Maker final : private ModelVisitor {
public:
    Maker(ElementIds& ids, const KelModel& model, const source::SourceMap* source, Of of)
        : ids_(ids), source_(source), of_(of) {
        if (source != nullptr) {
            quids_.reserve(source->getCount());
        }
        walkModel(model, of == Of::all || source != nullptr ? documentParts : packageParts, *this);
        if (ids_.numbers_) {
            ids_.numbered_.reserve(elements_.size());
        } else {
            ids_.ids_.reserve(elements_.size());
        }
        for (const Element& element : elements_) {
            giveId(element);
        }
    }

private:
    struct Element {
        const KelObject* object;
        const source::SourcePlace* place; // null: no quid that can be part of an id
        std::size_t depth;                // the number of its owners
    };

    void enter(const KelObject& object) override {
        const source::SourcePlace* place = source_ != nullptr ? source_->find(object) : nullptr;
        if (place != nullptr && !mayBeId(place->quid)) {
            place = nullptr;
        }
        if (place != nullptr) {
            const auto [first, isNew] = quids_.insert(place);
            if (!isNew && *first != place) { // an argument may have two owners
                shared_.insert(place);
                shared_.insert(*first);
            }
        }
        const std::size_t depth = depth_++;
        if (of_ == Of::all || object.elementType == KelElementType::model || isPackageOrClass(object)) {
            elements_.push_back({&object, place, depth});
        }
    }
    void leave(const KelObject& /*object*/) override { --depth_; }

    void giveId(const Element& element) {
        const auto [id, isNew] = addId(*element.object);
        owners_.resize(element.depth);
        entered_ = std::min(entered_, owners_.size());
        if (isNew) {
            const bool hasOwnQuid = element.place != nullptr && (shared_.empty() || !shared_.contains(element.place));
            *id = hasOwnQuid ? quidId(element.place->quid) : nameId(*element.object);
        }
        owners_.push_back(element.object);
    }

    /// Where the id of an element is to be, and whether it is not there yet: an argument may have two owners.
    std::pair<std::string_view*, bool> addId(const KelObject& object) {
        if (!ids_.numbers_) {
            const auto [id, isNew] = ids_.ids_.try_emplace(&object);
            return {&id.value(), isNew};
        }
        if (const std::uint32_t number = ids_.numbers_->numberOf(object); number != 0) {
            return {&ids_.numbered_[number - 1], false};
        }
        std::string_view& id = ids_.numbered_.emplace_back();
        ids_.numbers_->give(object, static_cast<std::uint32_t>(ids_.numbered_.size()));
        return {&id, true};
    }

    std::string_view quidId(std::string_view quid) {
        char* const text = newText(1 + quid.size());
        *text = 'q';
        std::ranges::transform(quid, text + 1, text::lower);
        return {text, 1 + quid.size()};
    }

    std::string_view nameId(const KelObject& object) {
        constexpr std::size_t model = 1; // is not in the name
        names_.leaveTo(std::max(entered_, model) - model);
        for (entered_ = std::max(entered_, model); entered_ < owners_.size(); ++entered_) {
            names_.enter(shownName(*owners_[entered_], repaired_));
        }
        const std::string id = idOfName(names_.take(kindOf(object), shownName(object, repaired_)));
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
    /// The first of the places that have a quid. With hashes, as comparing needs two places more.
    tsl::robin_set<const source::SourcePlace*, QuidHash, QuidEqual, std::allocator<const source::SourcePlace*>, true>
        quids_;
    tsl::robin_set<const source::SourcePlace*, KelPointerHash> shared_; // those of elements that have one quid
    std::vector<const KelObject*> owners_;                              // of the element, the model first
    std::size_t entered_ = 0;                                           // of these, those whose names `names_` has
    NameIds names_{kindWords()};
    std::string repaired_;
};

ElementIds::ElementIds(const KelModel& model, const source::SourceMap* source, Of of, Find find) {
    if (find == Find::byNumber) {
        numbers_.emplace();
    }
    const Maker maker(*this, model, source, of);
}

} // namespace exporter
