#include "host/literals/KelTextLiteral.h"

KelTextLiteral::~KelTextLiteral() = default;

void KelTextLiteral::update(const KelString& text, const KelDOMElement* entry) {
    if (entry != nullptr) {
        text_ = text;
    }
}
