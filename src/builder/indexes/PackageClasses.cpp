#include "builder/indexes/PackageClasses.h"

#include "host/model/KelClass.h"
#include "host/text/KelTextHash.h"

#include <functional>
#include <memory>
#include <string_view>
#include <tsl/robin_map.h>
#include <utility>

namespace rose::PackageClasses {

namespace {

using NamedClass = std::pair<std::string_view, KelClass*>;
constexpr bool storesHash = true; // names of one length would otherwise be compared letter by letter

tsl::robin_map<std::string_view, KelClass*, KelTextHash, std::equal_to<>, std::allocator<NamedClass>,
               storesHash>
    classes; // keyed by the class's own name text

} // namespace

void add(KelClass& added) {
    classes.try_emplace(added.getName().view(), &added);
}

KelClass* find(const KelString& name) {
    const auto found = classes.find(name.view());
    return found != classes.end() ? found->second : nullptr;
}

void forget(const KelClass& deleted) noexcept {
    const auto found = classes.find(deleted.getName().view());
    if (found != classes.end() && found->second == &deleted) {
        classes.erase(found);
    }
}

void clear() noexcept {
    classes.clear();
}

} // namespace rose::PackageClasses
