#include "export/NameIds.h"

#include "host/text/KelTextHash.h"
#include "text/ascii.h"

#define XXH_STATIC_LINKING_ONLY // the states of hashes are copied
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <tsl/robin_map.h>

namespace exporter {

namespace {

using HashState = XXH64_state_t;

void add(HashState& state, std::string_view text) {
    XXH64_update(&state, text.data(), text.size());
}

/// Hashes hashes under the key of the process. Otherwise a file could choose names that collide in the table.
struct KeyedHash {
    std::size_t operator()(std::uint64_t hash) const noexcept {
        return KelTextHash()({reinterpret_cast<const char*>(&hash), sizeof hash});
    }
};

} // namespace

bool mayBeId(std::string_view quid) {
    return !quid.empty() && std::ranges::all_of(quid, [](char byte) {
        const char lower = static_cast<char>(byte | 0x20);
        return (lower >= 'a' && lower <= 'z') || (byte >= '0' && byte <= '9') || byte == '.' || byte == '-' ||
               byte == '_';
    });
}

std::string idOfQuid(std::string_view quid) {
    return "q" + text::lowerCase(quid);
}

std::string idOfName(std::uint64_t hash) {
    std::array<char, 18> text{};
    std::snprintf(text.data(), text.size(), "n%016" PRIx64, hash);
    return text.data();
}

/// Keeps the states of the hash after the name of each owner, for each kind as deep as an element of that kind was met.
class NameIds::Hashes {
public:
    explicit Hashes(const std::vector<std::string_view>& kinds) : states_(kinds.size()) {
        for (const std::string_view kind : kinds) {
            kinds_.emplace_back(kind).push_back('\0');
        }
    }

    void enter(std::string_view owner) { owners_.emplace_back(owner).append("::"); }
    void leave() {
        owners_.pop_back();
        for (std::vector<HashState>& states : states_) {
            states.resize(std::min(states.size(), owners_.size() + 1));
        }
    }

    std::uint64_t take(std::size_t kind, std::string_view name) {
        std::vector<HashState>& states = states_[kind];
        if (states.empty()) {
            XXH64_reset(&states.emplace_back(), 0);
            add(states.back(), kinds_[kind]);
        }
        while (states.size() <= owners_.size()) {
            states.push_back(states.back());
            add(states.back(), owners_[states.size() - 2]);
        }
        HashState state = states.back();
        add(state, name);
        return freeHash(state);
    }

private:
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

    std::vector<std::string> kinds_;  // each with a NUL
    std::vector<std::string> owners_; // each with the "::" after it
    std::vector<std::vector<HashState>> states_; // [kind][d] is the state after the first d owners
    tsl::robin_map<std::uint64_t, std::uint32_t, KeyedHash> taken_; // with the last number added to each name
};

NameIds::NameIds(const std::vector<std::string_view>& kinds) : hashes_(std::make_unique<Hashes>(kinds)) {}
NameIds::~NameIds() = default;

void NameIds::enter(std::string_view owner) {
    hashes_->enter(owner);
}

void NameIds::leave() {
    hashes_->leave();
}

std::uint64_t NameIds::take(std::size_t kind, std::string_view name) {
    return hashes_->take(kind, name);
}

} // namespace exporter
