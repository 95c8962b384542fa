#pragma once

#include "host/literals/KelTextLiteral.h"
#include "host/literals/KelTextParameters.h"

/// A text with placeholders "{0}", "{1}" ... for values.
///
/// The values are in a workspace that the caller owns, so any number of threads may fill in one literal. The functions
/// may throw `std::bad_alloc`. The cost is proportional to the resulting text.
class KEL_API KelParameterizedTextLiteral : public KelTextLiteral {
public:
    KelParameterizedTextLiteral(const KelString& identifier, const KelString& text)
        : KelTextLiteral(identifier, text) {}
    ~KelParameterizedTextLiteral() override;

    void update(const KelString& text, const KelDOMElement* entry) override;

    /// An empty workspace.
    [[nodiscard]] KelTextParameters prapareForParameters() const;
    /// Sets the value of "{index}", replacing an earlier one. A negative index is ignored.
    void setParameterValue(KelTextParameters& parameters, int index, const KelString& value) const;
    /// The text with all values filled in, in one pass: a value that contains "{0}" is not filled in again.
    [[nodiscard]] KelString createParametrizedText(const KelTextParameters& parameters) const;
};
