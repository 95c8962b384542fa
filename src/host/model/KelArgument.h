#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelClass;
class KelOperation;
class KelType;

/// An argument of an operation, or a template argument of a class. It refers to its type.
///
/// It belongs to the operation, the class, or both; when one of two owners is deleted, the argument is deleted too.
class KEL_API KelArgument final : public KelModelObject {
public:
    KelArgument();
    ~KelArgument() override;

    [[nodiscard]] KelOperation* getOperation() const;
    [[nodiscard]] KelClass* getAssociatedClass() const;

    /// Sets the type, replacing an earlier one.
    bool addType(KelType* type);
    [[nodiscard]] KelType* getType() const;

    std::int16_t position = 0; // index in the order of adding, from 0; set by the code that adds
    KelString initialValue;

private:
    friend struct KelRelations;
    KelOne operation_;
    KelOne class_;
    KelOne type_;
};
