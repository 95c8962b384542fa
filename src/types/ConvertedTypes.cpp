#include "types/ConvertedTypes.h"

#include "host/model/KelDerivedType.h"
#include "host/text/KelTextHash.h"

#include <string_view>
#include <tsl/robin_map.h>

namespace rose::ConvertedTypes {

namespace {

struct Key {
    std::string_view name;
    std::string_view dataType;
    int length;

    bool operator==(const Key&) const = default;
};

struct KeyHash {
    std::size_t operator()(const Key& key) const noexcept {
        // Most names have one data type and one length.
        return KelTextHash()(key.name) + static_cast<std::size_t>(key.length);
    }
};

tsl::robin_map<Key, KelDerivedType*, KeyHash> types; // the texts of a key are the type's own

} // namespace

Scope::Scope() noexcept {
    types.clear();
}

Scope::~Scope() {
    types.clear();
}

void note(KelDerivedType& made) {
    types.try_emplace(Key{made.getName().view(), made.getDataType().view(), made.getLength()}, &made);
}

KelDerivedType* find(const KelString& dataType, const KelString& name, int length) {
    const auto found = types.find(Key{name.view(), dataType.view(), length});
    return found != types.end() ? found->second : nullptr;
}

} // namespace rose::ConvertedTypes
