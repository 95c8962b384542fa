#include "host/options/KelBridgeOptionEnumerationLiteral.h"

KelBridgeOptionEnumerationLiteral::~KelBridgeOptionEnumerationLiteral() = default;

const KelTextLiteral* KelBridgeOptionEnumerationLiteral::getValue(int index) const {
    return index >= 0 && index < count_ ? values_[index] : nullptr;
}
