#include "host/literals/KelLiteralRegistry.h"

#include "host/literals/KelTextLiteralsCollection.h"

KelLiteralRegistry& KelLiteralRegistry::instance() {
    static KelLiteralRegistry registry;
    return registry;
}

bool KelLiteralRegistry::registerCollection(const KelTextLiteralsCollection& collection) {
    const auto [entry, added] = collections_.try_emplace(std::string(collection.getDocumentId().view()), &collection);
    return added || entry->second == &collection;
}

void KelLiteralRegistry::unregisterCollection(const KelTextLiteralsCollection& collection) noexcept {
    std::erase_if(collections_, [&](const auto& entry) { return entry.second == &collection; });
}

const KelTextLiteralsCollection* KelLiteralRegistry::findCollection(const KelString& documentId) const {
    const auto entry = collections_.find(documentId.view());
    return entry != collections_.end() ? entry->second : nullptr;
}
