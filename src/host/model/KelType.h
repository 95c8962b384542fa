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

/// A data type, which a model owns. Features, arguments and operations refer to it.
///
/// Deleting a type leaves its users without a type. The properties are read here and set in `KelConcreteType`; texts
/// returned by reference live until the property is next changed.
class KEL_API KelType : public KelModelObject {
public:
    ~KelType() override;

    /// The name of the data type, such as "SQL_INTEGER".
    virtual const KelString& getDataType() const = 0;
    /// The properties, as `KelConcreteType` describes them.
    virtual int getLength() const = 0;
    virtual int getScale() const = 0;
    virtual const KelString& getInitialValue() const = 0;
    virtual const KelString& getLowerBound() const = 0;
    virtual const KelString& getUpperBound() const = 0;
    virtual bool getUserDefined() const = 0;
    virtual const KelString& getNativeDataType() const = 0;
    virtual const KelString& getUserDataType() const = 0;
    virtual const KelString& getNativeLogicalDataType() const = 0;
    /// The type itself if it is concrete, the type at the end of the chain if it is an alias; null for an alias of
    /// nothing.
    virtual const KelConcreteType* getActualType() const = 0;
    /// The values of an enumerated type; every other type has none.
    virtual int getTypeValueCount() const = 0;
    /// Whether the type has this value.
    virtual bool containsTypeValue(const KelTypeValue* value) const = 0;
    /// The type value at `index` in the order of adding, or null.
    virtual KelTypeValue* getTypeValue(int index) const = 0;
    /// The first type value of that name, or null. Its index is stored in `index` unless that is null.
    virtual KelTypeValue* getTypeValue(const KelString& name, int* index) const = 0;
    /// Replaces the contents of `values` by this type's values. O(n log n).
    virtual void getTypeValueByPosition(KelTypeValueByPosition& values) const = 0;

    [[nodiscard]] KelModel* getModel() const;

    /// Add a user, whose earlier type is replaced. False when it has this type already.
    bool addFeature(KelFeature* feature);
    bool addArgument(KelArgument* argument);
    bool addOperation(KelOperation* operation);
    /// Remove the user at `index`, which then has no type.
    bool removeFeature(int index) noexcept;
    bool removeArgument(int index) noexcept;
    bool removeOperation(int index) noexcept;
    /// The users of the type, in the order of adding.
    [[nodiscard]] KelLinks<KelFeature> features() const { return KelLinks<KelFeature>(features_); }
    [[nodiscard]] KelLinks<KelArgument> arguments() const { return rareLinks<KelArgument>(KelRareEnd::arguments); }
    /// The operations that return the type.
    [[nodiscard]] KelLinks<KelOperation> operations() const { return rareLinks<KelOperation>(KelRareEnd::operations); }
    [[nodiscard]] KelLinks<KelAliasType> aliasTypes() const { return rareLinks<KelAliasType>(KelRareEnd::aliasTypes); }

protected:
    using KelModelObject::KelModelObject;

private:
    friend struct KelRelations;
    KelOne model_;
    KelMany features_;
};
