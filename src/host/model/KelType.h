#pragma once

#include "host/model/KelModelObject.h"
#include "host/model/links/KelOne.h"

class KelAliasType;
class KelArgument;
class KelConcreteType;
class KelFeature;
class KelModel;
class KelOperation;
class KelTypeValue;
class KelTypeValueByPosition;

/// A data type. A model owns it; features, arguments and operations use it.
class KEL_API KelType : public KelModelObject {
public:
    ~KelType() override;

    /// The name of the data type, such as "SQL_INTEGER".
    virtual const KelString& getDataType() const = 0;
    virtual int getLength() const = 0;
    virtual int getScale() const = 0;
    virtual const KelString& getInitialValue() const = 0;
    virtual const KelString& getLowerBound() const = 0;
    virtual const KelString& getUpperBound() const = 0;
    virtual bool getUserDefined() const = 0;
    virtual const KelString& getNativeDataType() const = 0;
    virtual const KelString& getUserDataType() const = 0;
    virtual const KelString& getNativeLogicalDataType() const = 0;
    /// The concrete type that this type stands for, itself if it is one; null for an alias of nothing.
    virtual const KelConcreteType* getActualType() const = 0;
    virtual int getTypeValueCount() const = 0;
    virtual bool containsTypeValue(const KelTypeValue* value) const = 0;
    /// The type value at `index` in the order of adding, or null.
    virtual KelTypeValue* getTypeValue(int index) const = 0;
    /// The first type value of that name, whose index `index`, when given, receives; or null.
    virtual KelTypeValue* getTypeValue(const KelString& name, int* index) const = 0;
    /// Fills `values` with this type's values in place of what it held.
    virtual void getTypeValueByPosition(KelTypeValueByPosition& values) const = 0;

    [[nodiscard]] KelModel* getModel() const;

    /// The users of the type. Adding a user replaces its earlier type.
    bool addFeature(KelFeature* feature);
    bool addArgument(KelArgument* argument);
    bool addOperation(KelOperation* operation);
    /// Take the user at `index` away; it is then without a type.
    bool removeFeature(int index) noexcept;
    bool removeArgument(int index) noexcept;
    bool removeOperation(int index) noexcept;
    [[nodiscard]] KelLinks<KelFeature> features() const { return KelLinks<KelFeature>(features_); }
    [[nodiscard]] KelLinks<KelArgument> arguments() const { return KelLinks<KelArgument>(arguments_); }
    /// The operations that return it.
    [[nodiscard]] KelLinks<KelOperation> operations() const { return KelLinks<KelOperation>(operations_); }
    [[nodiscard]] KelLinks<KelAliasType> aliasTypes() const { return KelLinks<KelAliasType>(aliasTypes_); }

protected:
    using KelModelObject::KelModelObject;

private:
    friend struct KelRelations;
    KelOne model_;
    KelMany features_;
    KelMany arguments_;
    KelMany operations_;
    KelMany aliasTypes_;
};
