#pragma once

#include "host/literals/KelTextLiteralsCollection.h"
#include "host/options/KelBridgeEnumValueLiteral.h"
#include "host/options/KelBridgeOptionEnumerationLiteral.h"

/// The option literals that all bridges share. They are registered under the document "KelHostOptions" and live while
/// the library is loaded. KelTextLiteral.h has the rules for threads.
class KEL_API BLIB : public KelTextLiteralsCollection {
public:
    /// The encodings that a model file may have; all contain ASCII, the encoding of its keywords. The identifier of a
    /// value is an encoding name that the conversion service (ICU) knows, or "unknown", which leaves the texts as they
    /// are.
    static KelBridgeOptionEnumerationLiteral BP_ENCODING_ENUM;
    /// The first of them, which is the default.
    static KelBridgeEnumValueLiteral BP_ENCODING_ENUM_WESTERN_EUROPEAN__WINDOWS_1252_;

    const KelString& getDocumentId() const override;
    KelTextLiteral* const* listAllLiterals() const override;
};
