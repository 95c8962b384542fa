#pragma once

#include <tsl/robin_map.h>

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

class KelObject;

namespace ledger {

/// Objects by an owner, a second object and a name, to be taken one after the other in the order in which they were
/// added. Costs the same however many there are.
class Claims {
public:
    struct Key {
        const void* owner;
        std::string_view name;
        const void* other = nullptr;
        bool operator==(const Key&) const = default;
    };

    /// The name must live as long.
    void add(const Key& key, KelObject* object);
    /// Keeps a copy of the name.
    void addCopy(const Key& key, KelObject* object);
    /// The first object of that key that was not taken; null when there is none.
    KelObject* take(const Key& key);
    /// The first object of that key, taken or not.
    [[nodiscard]] KelObject* first(const Key& key) const;

private:
    struct KeyHash {
        std::size_t operator()(const Key& key) const noexcept {
            return std::hash<std::string_view>()(key.name) * 31 + reinterpret_cast<std::uintptr_t>(key.owner) / 16 +
                   reinterpret_cast<std::uintptr_t>(key.other) * 7;
        }
    };
    struct Item {
        KelObject* object;
        std::uint32_t next; // the one behind it of the same key; 0 for none
    };
    struct Chain {
        std::uint32_t head;  // the first of all
        std::uint32_t first; // of those not taken; 0 when all are
        std::uint32_t last;
    };

    std::vector<Item> items_{Item{nullptr, 0}};
    tsl::robin_map<Key, Chain, KeyHash> chains_;
    std::deque<std::string> copies_;
};

} // namespace ledger
