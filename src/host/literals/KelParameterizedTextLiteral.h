#pragma once

#include "host/literals/KelTextLiteral.h"
#include "host/literals/KelTextParameters.h"

/// A text with places "{0}", "{1}" ... for values. The three steps of filling them in work on the caller's
/// workspace only, so that one literal may serve several threads.
class KEL_API KelParameterizedTextLiteral : public KelTextLiteral {
public:
    KelParameterizedTextLiteral(const KelString& identifier, const KelString& text)
        : KelTextLiteral(identifier, text) {}
    ~KelParameterizedTextLiteral() override;

    void update(const KelString& text, const KelDOMElement* entry) override;

    /// A workspace without values.
    [[nodiscard]] KelTextParameters prapareForParameters() const;
    /// Sets the value of "{index}", in place of an earlier one. A negative index is ignored.
    void setParameterValue(KelTextParameters& parameters, int index, const KelString& value) const;
    /// The text with every value filled in, in one pass: what a value holds is never taken for a place.
    [[nodiscard]] KelString createParametrizedText(const KelTextParameters& parameters) const;
};
