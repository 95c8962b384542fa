#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

class KelTextLiteral;

/// The literals of one document, which belongs to a bridge or to the host.
///
/// A registered collection remains in the process's literal registry until its destructor removes it, so that a plug-in
/// can be unloaded. KelLiteralRegistry.h has the rules for errors and threads.
class KEL_API KelTextLiteralsCollection {
public:
    KelTextLiteralsCollection();
    KelTextLiteralsCollection(const KelTextLiteralsCollection&) = delete;
    KelTextLiteralsCollection& operator=(const KelTextLiteralsCollection&) = delete;

    /// The identifier of the document. It must not change while the collection is registered.
    virtual const KelString& getDocumentId() const = 0;
    /// The literals, followed by a null pointer. They live at least as long as the collection.
    virtual KelTextLiteral* const* listAllLiterals() const = 0;

    /// Registers this collection, as `KelLiteralRegistry::registerCollection` does.
    bool init();

protected:
    ~KelTextLiteralsCollection();
};
