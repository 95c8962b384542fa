#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

class KelTextLiteral;

/// The literals of one document: a bridge's, or one of the host's own.
///
/// Once registered, a collection stays in the process's literal registry until it is destroyed; destroying it
/// takes it out, so that a plug-in leaves nothing behind when it is unloaded.
class KEL_API KelTextLiteralsCollection {
public:
    KelTextLiteralsCollection();
    KelTextLiteralsCollection(const KelTextLiteralsCollection&) = delete;
    KelTextLiteralsCollection& operator=(const KelTextLiteralsCollection&) = delete;

    /// The identifier of the document, which must stay the same while registered.
    virtual const KelString& getDocumentId() const = 0;
    /// The literals, ended by a null pointer. The collection keeps them alive as long as it lives itself.
    virtual KelTextLiteral* const* listAllLiterals() const = 0;

    /// Registers this collection; as `KelLiteralRegistry::registerCollection`.
    bool init();

protected:
    ~KelTextLiteralsCollection();
};
