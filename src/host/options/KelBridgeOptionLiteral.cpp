#include "host/options/KelBridgeOptionLiteral.h"

#include "host/options/KelBridgeOptionEnumerationLiteral.h"
#include "host/options/KelOption.h"

#include <utility>

namespace {

KelOptionDescription describe(const KelBridgeOptionLiteral& literal, bool required) {
    KelOptionDescription description;
    description.name = literal.getName();
    description.type = literal.getType();
    description.text = literal.getDescription();
    description.defaultValue = literal.getDefaultValue();
    description.required = required;
    if (const KelBridgeOptionEnumerationLiteral* enumeration = literal.getEnumeration()) {
        for (int i = 0; i < enumeration->getValueCount(); ++i) {
            const KelTextLiteral* value = enumeration->getValue(i);
            description.choices.push_back({value->getIdentifier(), value->getText()});
        }
    }
    return description;
}

} // namespace

KelBridgeOptionLiteral::KelBridgeOptionLiteral(const KelString& identifier, const KelString& name,
                                               const KelString& type, const KelString& description,
                                               const KelBridgeOptionEnumerationLiteral* enumeration,
                                               const KelTextLiteral* defaultValue)
    : KelTextLiteral(identifier, description), name_(name), type_(type), enumeration_(enumeration),
      defaultValue_(defaultValue) {}

KelBridgeOptionLiteral::~KelBridgeOptionLiteral() = default;

const KelString& KelBridgeOptionLiteral::getDefaultValue() const {
    if (defaultValue_ == nullptr) {
        return emptyString;
    }
    return enumeration_ != nullptr ? defaultValue_->getIdentifier() : defaultValue_->getText();
}

std::unique_ptr<KelOption> KelBridgeOptionLiteral::generateOption(bool required) const {
    return std::make_unique<KelOption>(describe(*this, required));
}

std::unique_ptr<KelOption> KelBridgeOptionLiteral::generateOption(bool required, const char* const* extensions,
                                                                  const KelString& extensionsLabel,
                                                                  bool mustExist) const {
    KelOptionDescription description = describe(*this, required);
    for (; *extensions != nullptr; ++extensions) {
        description.files.extensions.emplace_back(*extensions);
    }
    description.files.extensionsLabel = extensionsLabel;
    description.files.mustExist = mustExist;
    return std::make_unique<KelOption>(std::move(description));
}
