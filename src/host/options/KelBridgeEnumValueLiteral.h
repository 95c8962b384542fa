#pragma once

#include "host/literals/KelTextLiteral.h"

/// One allowed value of an enumerated option: the identifier is the value, the text its label for users.
class KEL_API KelBridgeEnumValueLiteral : public KelTextLiteral {
public:
    KelBridgeEnumValueLiteral(const KelString& identifier, const KelString& text) : KelTextLiteral(identifier, text) {}
    ~KelBridgeEnumValueLiteral() override;
};
