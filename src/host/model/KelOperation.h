#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelArgument;
class KelClass;
class KelType;

/// An operation of a class, which owns it. Owns its arguments and refers to its return type. A class may have several
/// operations of one name.
class KEL_API KelOperation final : public KelModelObject {
public:
    KelOperation();
    ~KelOperation() override;

    [[nodiscard]] KelClass* getAssociatedClass() const;

    bool addArgument(KelArgument* argument);
    [[nodiscard]] KelLinks<KelArgument> arguments() const { return KelLinks<KelArgument>(arguments_); }

    /// Sets the return type, replacing an earlier one.
    bool addReturnType(KelType* type);
    [[nodiscard]] KelType* getReturnType() const;

    std::int32_t visibility = 0;  // 0 public, 1 protected, 2 private, 3 implementation
    std::int32_t concurrency = 0; // 0 sequential, 1 guarded, 3 any other
    bool isFriend = false;
    bool isStatic = false; // called without an object
    bool isVirtual = false;
    KelString semantics; // free texts of the modeller
    KelString precondition;
    KelString postcondition;

private:
    friend struct KelRelations;
    KelOne class_;
    KelMany arguments_;
    KelOne returnType_;
};
