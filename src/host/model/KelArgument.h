#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelClass;
class KelOperation;
class KelType;

/// An argument of an operation or a template argument of a class; either owns it. Refers to its type.
class KEL_API KelArgument final : public KelModelObject {
public:
    KelArgument();
    ~KelArgument() override;

    [[nodiscard]] KelOperation* getOperation() const;
    [[nodiscard]] KelClass* getAssociatedClass() const;

    /// Makes `type` the argument's type in place of an earlier one.
    bool addType(KelType* type);
    [[nodiscard]] KelType* getType() const;

    std::int16_t position = 0; // 0-based place in the order of adding
    KelString initialValue;

private:
    friend struct KelRelations;
    KelOne operation_;
    KelOne class_;
    KelOne type_;
};
