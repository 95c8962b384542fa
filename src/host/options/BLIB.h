#pragma once

#include "host/literals/KelTextLiteralsCollection.h"
#include "host/options/KelBridgeEnumValueLiteral.h"
#include "host/options/KelBridgeOptionEnumerationLiteral.h"

/// The option literals that bridges share.
class KEL_API BLIB : public KelTextLiteralsCollection {
public:
    /// The encodings a model file may be in; all have ASCII, which its keywords are in. A value's identifier is an
    /// encoding name that the conversion service knows, or "unknown" for leaving the texts as they are.
    static KelBridgeOptionEnumerationLiteral BP_ENCODING_ENUM;
    /// The encoding that is offered first.
    static KelBridgeEnumValueLiteral BP_ENCODING_ENUM_WESTERN_EUROPEAN__WINDOWS_1252_;

    const KelString& getDocumentId() const override;
    KelTextLiteral* const* listAllLiterals() const override;
};
