#include "types/ConvertedTypes.h"

#include "host/model/KelDerivedType.h"

#include <map>
#include <string_view>
#include <tuple>

namespace rose::ConvertedTypes {

namespace {

using Key = std::tuple<std::string_view, std::string_view, int>; // name, data type, length; the texts are the type's

std::map<Key, KelDerivedType*> types;

} // namespace

Scope::Scope() noexcept {
    types.clear();
}

Scope::~Scope() {
    types.clear();
}

void note(KelDerivedType& made) {
    types.try_emplace(Key(made.getName().view(), made.getDataType().view(), made.getLength()), &made);
}

KelDerivedType* find(const KelString& dataType, const KelString& name, int length) {
    const auto found = types.find(Key(name.view(), dataType.view(), length));
    return found != types.end() ? found->second : nullptr;
}

} // namespace rose::ConvertedTypes
