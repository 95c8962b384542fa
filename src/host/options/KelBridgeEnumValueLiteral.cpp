#include "host/options/KelBridgeEnumValueLiteral.h"

KelBridgeEnumValueLiteral::~KelBridgeEnumValueLiteral() = default;
