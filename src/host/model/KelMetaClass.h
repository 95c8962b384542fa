#pragma once

#include "host/KelApi.h"
#include "host/model/KelClassCategoryType.h"
#include "host/model/KelElementType.h"

#include <cstdint>
#include <span>
#include <variant>
#include <vector>

class KelObject;
class KelString;
struct KelRelation;

/// One data field of a repository class: what copying, comparing and transcoding go through.
///
/// The name, the scratch fields `toolId` and `generalPointer`, and the links to other objects are no fields.
struct KelField {
    const char* name;
    std::variant<KelString KelObject::*, bool KelObject::*, std::int32_t KelObject::*, std::int16_t KelObject::*,
                 KelClassCategoryType KelObject::*>
        member;
};

/// One end of a relation as a class has it.
struct KelRelationEnd {
    const KelRelation* relation;
    bool isHolder; // whether objects of the class stand at the relation's holding end
};

/// What the repository knows of one of its classes: its code, its place in the class tree, its fields and the
/// ends of the relations its objects take part in.
///
/// There is one `KelMetaClass` a class, made when first asked for and kept until the library is unloaded.
class KEL_API KelMetaClass {
public:
    /// The class with this code.
    [[nodiscard]] static const KelMetaClass& of(KelElementType code);
    /// Every repository class, each after its base.
    [[nodiscard]] static std::span<const KelMetaClass> all();

    [[nodiscard]] KelElementType getCode() const noexcept { return code_; }
    /// The class's name as it stands in the code, for example "KelAttribute".
    [[nodiscard]] const char* getClassName() const noexcept { return name_; }
    /// The direct base, or null for `KelObject`.
    [[nodiscard]] const KelMetaClass* getBase() const noexcept { return base_; }
    /// Whether this class is the one with the given code or derives from it.
    [[nodiscard]] bool isA(KelElementType code) const noexcept;
    /// The fields of objects of this class, those of its bases first.
    [[nodiscard]] std::span<const KelField> fields() const noexcept { return fields_; }
    /// The relation ends of objects of this class, each kind in the order of the relation table: all of them,
    /// and the parts of them at which the object refers or is referred to, is owned, and owns.
    [[nodiscard]] std::span<const KelRelationEnd> ends() const noexcept { return ends_; }
    [[nodiscard]] std::span<const KelRelationEnd> referringEnds() const noexcept { return referringEnds_; }
    [[nodiscard]] std::span<const KelRelationEnd> ownedEnds() const noexcept { return ownedEnds_; }
    [[nodiscard]] std::span<const KelRelationEnd> owningEnds() const noexcept { return owningEnds_; }
    /// Those at whose other side the object stands in a collection, which has to hear when its name changes.
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
