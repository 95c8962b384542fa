#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <functional>
#include <map>
#include <string>

class KelTextLiteralsCollection;

/// Which literal collections are loaded in this process, by document identifier. It owns none of them. Plug-ins
/// are loaded and unloaded by one thread at a time.
class KEL_API KelLiteralRegistry {
public:
    static KelLiteralRegistry& instance();
    KelLiteralRegistry(const KelLiteralRegistry&) = delete;
    KelLiteralRegistry& operator=(const KelLiteralRegistry&) = delete;

    /// False when another collection of that document is registered, which then stays.
    bool registerCollection(const KelTextLiteralsCollection& collection);
    /// Takes the collection out, if it is in. Calls nothing on it, so that it may be half destroyed.
    void unregisterCollection(const KelTextLiteralsCollection& collection) noexcept;
    /// The collection registered for the document, or null.
    [[nodiscard]] const KelTextLiteralsCollection* findCollection(const KelString& documentId) const;

private:
    KelLiteralRegistry() = default;

    std::map<std::string, const KelTextLiteralsCollection*, std::less<>> collections_;
};
