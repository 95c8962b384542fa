#pragma once

#include "host/KelApi.h"
#include "host/model/KelClassCategoryType.h"
#include "host/model/KelElementType.h"
#include "host/model/KelTypeTexts.h"

#include <cstdint>
#include <span>
#include <variant>
#include <vector>

class KelObject;
class KelString;
struct KelRelation;

/// One data field of a repository class. Copying, comparing and transcoding go through these fields.
///
/// The name, `toolId`, `generalPointer` and the links to other objects are not fields.
struct KelField {
    const char* name;
    std::variant<KelString KelObject::*, bool KelObject::*, std::int32_t KelObject::*, std::int16_t KelObject::*,
                 KelClassCategoryType KelObject::*, KelTypeTexts KelObject::*>
        member;
};

/// One end of a relation, as the objects of a class have it.
struct KelRelationEnd {
    const KelRelation* relation;
    bool isHolder; // whether the class has the relation's holding end
};

/// The description of one repository class: its code, its base, its fields and its ends of relations.
///
/// There is one immutable `KelMetaClass` per class, made when the library is loaded and alive until it is unloaded. Any
/// number of threads may use it. Nothing here throws, and each function takes constant time, except `isA`, which takes
/// time proportional to the depth of the class tree.
class KEL_API KelMetaClass {
public:
    /// The class with this code.
    [[nodiscard]] static const KelMetaClass& of(KelElementType code);
    /// All repository classes, each after its base.
    [[nodiscard]] static std::span<const KelMetaClass> all();

    [[nodiscard]] KelElementType getCode() const noexcept { return code_; }
    /// The class's name in C++, for example "KelAttribute".
    [[nodiscard]] const char* getClassName() const noexcept { return name_; }
    /// The direct base, or null for `KelObject`.
    [[nodiscard]] const KelMetaClass* getBase() const noexcept { return base_; }
    /// Whether this class has the given code or is derived from the class that has it.
    [[nodiscard]] bool isA(KelElementType code) const noexcept;
    /// The fields of the class, those of its bases first.
    [[nodiscard]] std::span<const KelField> fields() const noexcept { return fields_; }
    /// The relation ends of the class, each kind in the order of the relation table: all of them, then the ends at
    /// which an object refers or is referred to, is owned, and owns.
    [[nodiscard]] std::span<const KelRelationEnd> ends() const noexcept { return ends_; }
    [[nodiscard]] std::span<const KelRelationEnd> referringEnds() const noexcept { return referringEnds_; }
    [[nodiscard]] std::span<const KelRelationEnd> ownedEnds() const noexcept { return ownedEnds_; }
    [[nodiscard]] std::span<const KelRelationEnd> owningEnds() const noexcept { return owningEnds_; }
    /// The ends whose other side is a collection, which must be called before and after a change of the name.
    [[nodiscard]] std::span<const KelRelationEnd> collectedEnds() const noexcept { return collectedEnds_; }

private:
    friend class KelMetaClassTable;
    KelMetaClass() = default;

    KelElementType code_ = KelElementType::object;
    const char* name_ = nullptr;
    const KelMetaClass* base_ = nullptr;
    std::vector<KelField> fields_;
    std::vector<KelRelationEnd> ends_;
    std::vector<KelRelationEnd> collectedEnds_;
    std::span<const KelRelationEnd> referringEnds_;
    std::span<const KelRelationEnd> ownedEnds_;
    std::span<const KelRelationEnd> owningEnds_;
};
