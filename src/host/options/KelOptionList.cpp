#include "host/options/KelOptionList.h"

#include "host/options/KelOption.h"

namespace {

// The vector holds constant pointers as every container does; what they point to is this list's own.
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
