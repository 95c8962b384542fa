#pragma once

#include "host/literals/KelTextLiteral.h"

#include <memory>

class KelBridgeOptionEnumerationLiteral;
class KelOption;

/// The literal form of an option, from which option objects are made. Its text is the description.
class KEL_API KelBridgeOptionLiteral : public KelTextLiteral {
public:
    /// `name` is the key of the option in an option list, `type` its type word ("File", "Enumerated").
    /// `enumeration` and `defaultValue` may be null; both must outlive this object.
    KelBridgeOptionLiteral(const KelString& identifier, const KelString& name, const KelString& type,
                           const KelString& description, const KelBridgeOptionEnumerationLiteral* enumeration,
                           const KelTextLiteral* defaultValue);
    ~KelBridgeOptionLiteral() override;

    [[nodiscard]] const KelString& getName() const { return name_; }
    [[nodiscard]] const KelString& getType() const { return type_; }
    [[nodiscard]] const KelString& getDescription() const { return getText(); }
    [[nodiscard]] const KelBridgeOptionEnumerationLiteral* getEnumeration() const { return enumeration_; }
    /// What a new option's value is: of an enumerated option the identifier of the default literal, of another
    /// its text, and empty without a default.
    [[nodiscard]] const KelString& getDefaultValue() const;

    /// A new option, set to the default. `required` says that an import cannot do without a value.
    [[nodiscard]] std::unique_ptr<KelOption> generateOption(bool required) const;
    /// The same for a file: the null-terminated `extensions` (without dot) are those of the files to offer and
    /// `extensionsLabel` the name of that choice; `mustExist` says that the file is read, not written.
    [[nodiscard]] std::unique_ptr<KelOption> generateOption(bool required, const char* const* extensions,
                                                            const KelString& extensionsLabel, bool mustExist) const;

private:
    KelString name_;
    KelString type_;
    const KelBridgeOptionEnumerationLiteral* enumeration_;
    const KelTextLiteral* defaultValue_;
};
