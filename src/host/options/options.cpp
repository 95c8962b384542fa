// Options, the literals from which they are made, and the list in which a host sets them.
#include "host/options/KelBridgeEnumValueLiteral.h"
#include "host/options/KelBridgeOptionEnumerationLiteral.h"
#include "host/options/KelBridgeOptionLiteral.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"

#include <algorithm>
#include <utility>

KelOption::KelOption(KelOptionDescription description)
    : description_(std::move(description)), value_(description_.defaultValue) {}

KelOption::~KelOption() = default;

const KelString& KelOption::getValue() const {
    return value_;
}

bool KelOption::setValue(const KelString& value) {
    const std::vector<KelOptionChoice>& choices = description_.choices;
    const bool allowed = choices.empty() || std::any_of(choices.begin(), choices.end(),
                                                        [&](const auto& choice) { return choice.identifier == value; });
    if (allowed) {
        value_ = value;
    }
    return allowed;
}

KelBridgeEnumValueLiteral::~KelBridgeEnumValueLiteral() = default;

KelBridgeOptionEnumerationLiteral::~KelBridgeOptionEnumerationLiteral() = default;

const KelTextLiteral* KelBridgeOptionEnumerationLiteral::getValue(int index) const {
    return index >= 0 && index < count_ ? values_[index] : nullptr;
}

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

namespace {

// Containers hold pointers to constants; the options are this list's and may be changed.
KelOption* asOption(const void* element) {
    return static_cast<KelOption*>(const_cast<void*>(element));
}

} // namespace

KelOptionList::Options::~Options() = default;

int KelOptionList::Options::compare2Key(const void* element, const void* key) const {
    return asOption(element)->getName().view().compare(static_cast<const KelString*>(key)->view());
}

KelOptionList::~KelOptionList() {
    removeAll();
}

void KelOptionList::addOption(std::unique_ptr<KelOption> option) {
    if (options_.add(option.get(), true, nullptr)) {
        static_cast<void>(option.release());
    }
}

void KelOptionList::removeAll() {
    for (int i = 0; i < options_.getCount(); ++i) {
        delete asOption(options_[i]);
    }
    options_.empty();
}

KelOption* KelOptionList::findOption(const KelString& name) const {
    return asOption(options_.findFirst(&name, nullptr));
}

KelString KelOptionList::getValue(const KelString& name) const {
    const KelOption* option = findOption(name);
    return option != nullptr ? option->getValue() : KelString();
}

bool KelOptionList::setValue(const KelString& name, const KelString& value) {
    KelOption* option = findOption(name);
    return option != nullptr && option->setValue(value);
}

bool KelOptionList::setFreeValue(const KelString& name, const KelString& value) {
    KelOption* option = findOption(name);
    if (option != nullptr) {
        option->setFreeValue(value);
    }
    return option != nullptr;
}
