#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <functional>
#include <map>
#include <string>

class KelTextLiteralsCollection;

/// The registry of the literal collections that are loaded in this process, by document identifier.
///
/// It does not own them; a collection removes itself when it is destroyed. Registering may throw `std::bad_alloc` and
/// then changes nothing. There is no lock: one thread at a time loads and unloads plug-ins, and no thread searches
/// meanwhile. Searching and registering cost O(log n), removing O(n).
class KEL_API KelLiteralRegistry {
public:
    /// The only registry. It outlives every collection.
    static KelLiteralRegistry& instance();
    KelLiteralRegistry(const KelLiteralRegistry&) = delete;
    KelLiteralRegistry& operator=(const KelLiteralRegistry&) = delete;

    /// False when another collection of the same document is registered, which then remains. True when this one is.
    bool registerCollection(const KelTextLiteralsCollection& collection);
    /// Removes the collection if it is registered. Calls none of its functions: its destructor may be running.
    void unregisterCollection(const KelTextLiteralsCollection& collection) noexcept;
    /// The collection registered for the document, or null.
    [[nodiscard]] const KelTextLiteralsCollection* findCollection(const KelString& documentId) const;

private:
    KelLiteralRegistry() = default;

    std::map<std::string, const KelTextLiteralsCollection*, std::less<>> collections_;
};
