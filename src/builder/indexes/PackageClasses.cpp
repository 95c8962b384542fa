#include "builder/indexes/PackageClasses.h"

#include "host/model/KelClass.h"

#include <tsl/robin_map.h>

namespace rose::PackageClasses {

namespace {

tsl::robin_map<std::string_view, KelClass*> classes; // keyed by the class's own name text

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
