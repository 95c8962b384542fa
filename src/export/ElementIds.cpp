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
#include <cinttypes>
#include <cstdio>
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
        return place != nullptr && isPlain(place->quid) ? &place->quid : nullptr;
    }

    const source::SourceMap* source_;
    tsl::robin_map<std::string, const KelObject*, KelTextHash> owners_; // null: several elements have it
};

using HashState = XXH64_state_t;

void add(HashState& state, std::string_view text) {
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
    void leave() {
        owners_.pop_back();
        for (std::vector<HashState>& states : states_) {
            states.resize(std::min(states.size(), owners_.size() + 1));
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
            add(states.back(), shownName(*owners_[states.size() - 2]).append(separator));
        }
        HashState state = states.back();
        add(state, shownName(element));
        return state;
    }

private:
    std::vector<const KelObject*> owners_;
    /// [kind][d] is the state after the first d owners.
    std::vector<std::vector<HashState>> states_ = std::vector<std::vector<HashState>>(elementKinds().size());
};

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
    for (auto object = path.rbegin(); object != path.rend(); ++object) {
        name.append(object != path.rbegin() ? separator : "").append(shownName(**object));
    }
    return name;
}

class ElementIds::Maker final : private ModelVisitor {
public:
    Maker(ElementIds& ids, const KelModel& model, const source::SourceMap* source) : ids_(ids), quids_(model, source) {
        walkModel(model, documentParts, *this);
    }

private:
    void enter(const KelObject& element) override {
        if (const auto [id, isNew] = ids_.ids_.try_emplace(&element); isNew) { // an argument may have two owners
            id.value().quid = quids_.ownOf(element);
            if (id.value().quid == nullptr) {
                id.value().hash = freeHash(names_.of(element));
            }
        }
        if (element.elementType != KelElementType::model) {
            names_.enter(element);
        }
    }
    void leave(const KelObject& element) override {
        if (element.elementType != KelElementType::model) {
            names_.leave();
        }
    }

    /// The hash of the name, or of the name with the first number that no element has.
    std::uint64_t freeHash(const HashState& name) {
        const std::uint64_t plain = XXH64_digest(&name);
        if (taken_.try_emplace(plain, 1).second) {
            return plain;
        }
        std::uint32_t number = taken_.at(plain);
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
    Quids quids_;
    NameHashes names_;
    tsl::robin_map<std::uint64_t, std::uint32_t, KeyedHash> taken_; // with the last number added to each name
};

ElementIds::ElementIds(const KelModel& model, const source::SourceMap* source) {
    const Maker maker(*this, model, source);
}

std::string ElementIds::idOf(const KelObject& element) const {
    const auto found = ids_.find(&element);
    if (found == ids_.end()) {
        return {};
    }
    if (found->second.quid != nullptr) {
        return "q" + text::lowerCase(*found->second.quid);
    }
    std::array<char, 18> text{};
    std::snprintf(text.data(), text.size(), "n%016" PRIx64, found->second.hash);
    return text.data();
}

} // namespace exporter
