#pragma once

#include "host/literals/KelTextLiteral.h"

/// The allowed values of an enumerated option, in the order in which they are offered. Nothing here throws.
class KEL_API KelBridgeOptionEnumerationLiteral : public KelTextLiteral {
public:
    /// `values` points to an array of `count` literals. Neither it nor they are copied; both must outlive this object.
    KelBridgeOptionEnumerationLiteral(const KelString& identifier, const KelString& text, KelTextLiteral* const* values,
                                      int count)
        : KelTextLiteral(identifier, text), values_(values), count_(count) {}
    ~KelBridgeOptionEnumerationLiteral() override;

    [[nodiscard]] int getValueCount() const { return count_; }
    /// The literal at `index`, or null when there is none.
    [[nodiscard]] const KelTextLiteral* getValue(int index) const;

private:
    KelTextLiteral* const* values_;
    int count_;
};
