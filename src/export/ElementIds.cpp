#include "export/ElementIds.h"

#include "export/modelWalk.h"
#include "export/words.h"
#include "host/model/KelModel.h"
#include "host/text/KelTextHash.h"
#include "source/SourceMap.h"
#include "text/ascii.h"
#include "text/utf8.h"

#define XXH_STATIC_LINKING_ONLY // the states of hashes are copied
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace exporter {

namespace {

constexpr std::string_view separator = "::";

/// Whether a text may be part of an id.
bool isPlain(std::string_view quid) {
    return !quid.empty() && std::ranges::all_of(quid, [](char byte) {
        const char lower = static_cast<char>(byte | 0x20);
        return (lower >= 'a' && lower <= 'z') || (byte >= '0' && byte <= '9') || byte == '.' || byte == '-' ||
               byte == '_';
    });
}

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

using HashState = XXH64_state_t;

// Where the compiler knows the text, it warns of what XXH64 would do with longer ones.
[[gnu::noipa]] void add(HashState& state, std::string_view text) {
    XXH64_update(&state, text.data(), text.size());
}

/// XXH64 over kind, NUL and qualified name of the elements of a walk.
///
/// Keeps the states of the hash after the name of each owner, for each kind as deep as an element of that kind was met.
/// Each owner's name is therefore hashed once for a kind, and deep models cost no more than flat ones.
class NameHashes {
public:
    /// From now on `owner` contains the elements met.
    void enter(const KelObject& owner) { owners_.push_back(&owner); }
    /// Keeps so many owners.
    void leaveTo(std::size_t count) {
        if (count >= owners_.size()) {
            return;
        }
        owners_.resize(count);
        for (std::vector<HashState>& states : states_) {
            states.resize(std::min(states.size(), count + 1));
        }
    }

    /// The state of the hash after the qualified name of an element in the owner entered last.
    HashState of(const KelObject& element) {
        const auto kind = std::ranges::find(elementKinds(), element.elementType, &ElementKind::type);
        std::vector<HashState>& states = states_[static_cast<std::size_t>(kind - elementKinds().begin())];
        if (states.empty()) {
            XXH64_reset(&states.emplace_back(), 0);
            add(states.back(), {kind->word, std::char_traits<char>::length(kind->word) + 1}); // with its NUL
        }
        while (states.size() <= owners_.size()) {
            states.push_back(states.back());
            add(states.back(), shownName(*owners_[states.size() - 2], repaired_));
            add(states.back(), separator);
        }
        HashState state = states.back();
        add(state, shownName(element, repaired_));
        return state;
    }

private:
    std::vector<const KelObject*> owners_;
    std::string repaired_;
    /// [kind][d] is the state after the first d owners.
    std::vector<std::vector<HashState>> states_ = std::vector<std::vector<HashState>>(elementKinds().size());
};

bool isPackageOrClass(const KelObject& object) {
    return object.elementType == KelElementType::designPackage || object.elementType == KelElementType::classObject;
}

/// The parts without those of classes and other elements in packages.
std::span<const Part> partsOfPackages(const KelObject& owner) {
    const bool isAbove = owner.elementType == KelElementType::model || owner.isInstanceOf(KelElementType::package);
    return isAbove ? documentParts(owner) : std::span<const Part>();
}

/// Hashes hashes under the key of the process. Otherwise a file could choose names that collide in the table.
struct KeyedHash {
    std::size_t operator()(std::uint64_t hash) const noexcept {
        return KelTextHash()({reinterpret_cast<const char*>(&hash), sizeof hash});
    }
};

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
        walkModel(model, of == Of::all || source != nullptr ? documentParts : partsOfPackages, *this);
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
        const bool hasQuid = place != nullptr && isPlain(place->quid);
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
            id.value() = hasOwnQuid ? quidId(element.quid) : nameId(freeHash(names_.of(*element.object)));
        }
        if (element.depth > 0) {
            names_.enter(*element.object);
        }
    }

    std::string_view quidId(std::string_view quid) {
        char* const text = newText(1 + quid.size());
        *text = 'q';
        std::ranges::transform(quid, text + 1, text::lower);
        return {text, 1 + quid.size()};
    }

    std::string_view nameId(std::uint64_t hash) {
        constexpr std::size_t digits = 16;
        constexpr int bitsOfDigit = 4;
        char* const text = newText(1 + digits);
        *text = 'n';
        for (std::size_t at = digits; at > 0; --at, hash >>= bitsOfDigit) {
            text[at] = "0123456789abcdef"[hash % digits];
        }
        return {text, 1 + digits};
    }

    char* newText(std::size_t size) { return static_cast<char*>(ids_.texts_.allocate(size, 1)); }

    /// The hash of the name, or of the name with the first number that no element has.
    std::uint64_t freeHash(const HashState& name) {
        const std::uint64_t plain = XXH64_digest(&name);
        const auto [taken, isNew] = taken_.try_emplace(plain, 1);
        if (isNew) {
            return plain;
        }
        std::uint32_t number = taken->second;
        for (;;) {
            HashState state = name;
            add(state, "#" + std::to_string(++number));
            const std::uint64_t numbered = XXH64_digest(&state);
            if (taken_.try_emplace(numbered, 1).second) {
                taken_[plain] = number;
                return numbered;
            }
        }
    }

    ElementIds& ids_;
    const source::SourceMap* source_;
    Of of_;
    std::vector<Element> elements_; // in the order of the walk
    std::size_t depth_ = 0;
    /// The element that alone has the quid; null: there are several.
    tsl::robin_map<std::string_view, const KelObject*, FoldedHash, FoldedEqual> quids_;
    NameHashes names_;
    tsl::robin_map<std::uint64_t, std::uint32_t, KeyedHash> taken_; // with the last number added to each name
};

ElementIds::ElementIds(const KelModel& model, const source::SourceMap* source, Of of) {
    const Maker maker(*this, model, source, of);
}

} // namespace exporter
