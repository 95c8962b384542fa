#include "export/NameIds.h"

#include "host/text/KelTextHash.h"
#include "text/ascii.h"

#define XXH_STATIC_LINKING_ONLY // the states of hashes are copied
#include <xxhash.h>

#include <algorithm>
#include <tsl/robin_map.h>

namespace exporter {

namespace {

using HashState = XXH64_state_t;

// Where the compiler knows the text, it warns of what XXH64 would do with longer ones.
[[gnu::noipa]] void add(HashState& state, std::string_view text) {
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
    constexpr std::size_t digits = 16;
    constexpr unsigned bitsOfDigit = 4;
    std::string id(1 + digits, 'n');
    for (std::size_t at = digits; at > 0; --at, hash >>= bitsOfDigit) {
        id[at] = "0123456789abcdef"[hash % digits];
    }
    return id;
}

/// Keeps the states of the hash after the name of each owner, for each kind as deep as an element of that kind was met.
class NameIds::Hashes {
public:
    explicit Hashes(const std::vector<std::string_view>& kinds) : states_(kinds.size()) {
        for (const std::string_view kind : kinds) {
            kinds_.emplace_back(kind).push_back('\0');
        }
    }

    void enter(std::string_view owner) {
        owners_.append(owner).append("::");
        ends_.push_back(owners_.size());
    }
    void leaveTo(std::size_t count) {
        if (count >= ends_.size()) {
            return;
        }
        ends_.resize(count);
        owners_.resize(endOf(count));
        for (std::vector<HashState>& states : states_) {
            states.resize(std::min(states.size(), count + 1));
        }
    }

    std::uint64_t take(std::size_t kind, std::string_view name) {
        std::vector<HashState>& states = states_[kind];
        if (states.empty()) {
            XXH64_reset(&states.emplace_back(), 0);
            add(states.back(), kinds_[kind]);
        }
        while (states.size() <= ends_.size()) {
            const std::size_t count = states.size(); // of the owners that the last state has
            states.push_back(states.back());
            add(states.back(), std::string_view(owners_).substr(endOf(count - 1), endOf(count) - endOf(count - 1)));
        }
        HashState state = states.back();
        add(state, name);
        return freeHash(state);
    }

private:
    /// Where the names of so many owners end.
    [[nodiscard]] std::size_t endOf(std::size_t count) const { return count > 0 ? ends_[count - 1] : 0; }

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

    std::vector<std::string> kinds_;             // each with a NUL
    std::string owners_;                         // the names of the owners, each with the "::" after it
    std::vector<std::size_t> ends_;              // of these names
    std::vector<std::vector<HashState>> states_; // [kind][d] is the state after the first d owners
    tsl::robin_map<std::uint64_t, std::uint32_t, KeyedHash> taken_; // with the last number added to each name
};

NameIds::NameIds(const std::vector<std::string_view>& kinds) : hashes_(std::make_unique<Hashes>(kinds)) {}
NameIds::~NameIds() = default;

void NameIds::enter(std::string_view owner) {
    hashes_->enter(owner);
}

void NameIds::leaveTo(std::size_t count) {
    hashes_->leaveTo(count);
}

std::uint64_t NameIds::take(std::size_t kind, std::string_view name) {
    return hashes_->take(kind, name);
}

} // namespace exporter
