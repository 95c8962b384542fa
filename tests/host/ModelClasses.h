#pragma once

#include "host/model/links/KelRelations.h"

#include <memory>
#include <vector>

class KelObject;

/// A new object of the class with this code, or of the first class derived from it that has objects.
std::unique_ptr<KelObject> makeObject(KelElementType code);

/// One new object of every class that has objects and is or derives from the one with this code.
std::vector<std::unique_ptr<KelObject>> makeEach(KelElementType code = KelElementType::object);

/// The relation by its name and its holder's class.
const KelRelation& relationOf(KelElementType holder, std::string_view name);

/// The objects that `object` is linked to at one of its ends, in their order.
std::vector<KelObject*> linkedTo(const KelObject& object, const KelRelation& relation, bool isHolder);
