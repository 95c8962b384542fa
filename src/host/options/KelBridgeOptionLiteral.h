#pragma once

#include "host/literals/KelTextLiteral.h"

#include <memory>

class KelBridgeOptionEnumerationLiteral;
class KelOption;

/// The description of an option in the literals of a bridge, from which `KelOption`s are made. Its text is the
/// description for users. Making an option may throw `std::bad_alloc`; KelTextLiteral.h has the rules for threads.
class KEL_API KelBridgeOptionLiteral : public KelTextLiteral {
public:
    /// `name` is the option's key in an option list, `type` its type ("File", "Enumerated").
    /// `enumeration` and `defaultValue` may be null; both must outlive this object.
    KelBridgeOptionLiteral(const KelString& identifier, const KelString& name, const KelString& type,
                           const KelString& description, const KelBridgeOptionEnumerationLiteral* enumeration,
                           const KelTextLiteral* defaultValue);
    ~KelBridgeOptionLiteral() override;

    [[nodiscard]] const KelString& getName() const { return name_; }
    [[nodiscard]] const KelString& getType() const { return type_; }
    [[nodiscard]] const KelString& getDescription() const { return getText(); }
    [[nodiscard]] const KelBridgeOptionEnumerationLiteral* getEnumeration() const { return enumeration_; }
    /// The value of a new option: the identifier of the default literal for an enumerated option, its text for any
    /// other, and empty without a default.
    [[nodiscard]] const KelString& getDefaultValue() const;

    /// A new option with the default value. `required`: an import needs a value.
    [[nodiscard]] std::unique_ptr<KelOption> generateOption(bool required) const;
    /// The same for a file. `extensions` are those of the files to offer, without dot, followed by a null pointer (the
    /// array itself is not null); `extensionsLabel` names that choice; `mustExist`: the file is read, not written.
    [[nodiscard]] std::unique_ptr<KelOption> generateOption(bool required, const char* const* extensions,
                                                            const KelString& extensionsLabel, bool mustExist) const;

private:
    KelString name_;
    KelString type_;
    const KelBridgeOptionEnumerationLiteral* enumeration_;
    const KelTextLiteral* defaultValue_;
};
