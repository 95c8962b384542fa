#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <utility>
#include <vector>

class KelObject;

/// Gives many objects new names at once.
///
/// The result is that of `KelObject::setName` for one after the other, but a large collection in name order is sorted
/// once, when its order is next needed, where each `setName` would move an object within a search tree. Owns neither
/// objects nor models. One thread at a time uses the models of the objects.
class KEL_API KelRenaming {
public:
    KelRenaming() = default;
    KelRenaming(const KelRenaming&) = delete;
    KelRenaming& operator=(const KelRenaming&) = delete;

    /// Makes `carryOut` give the object this name. Precondition: it is added once, and lives until then. If it throws
    /// `std::bad_alloc`, the object is not added.
    void add(KelObject& object, KelString&& name);
    /// Renames the objects, in the order of adding, and forgets them. If it throws `std::bad_alloc`, none has been
    /// renamed. The cost is proportional to the objects added and to the collections that contain them.
    void carryOut();

    /// Whether `carryOut` is renaming the object.
    [[nodiscard]] static bool isUnderWay(const KelObject& object) noexcept;

private:
    std::vector<std::pair<KelObject*, KelString>> names_;
};
