#pragma once

#include "host/literals/KelTextLiteral.h"

/// The allowed values of an enumerated option, in the order in which they are offered.
class KEL_API KelBridgeOptionEnumerationLiteral : public KelTextLiteral {
public:
    /// `values` points to `count` literals. Neither the array nor the literals are copied: they must outlive
    /// this object.
    KelBridgeOptionEnumerationLiteral(const KelString& identifier, const KelString& text, KelTextLiteral* const* values,
                                      int count)
        : KelTextLiteral(identifier, text), values_(values), count_(count) {}
    ~KelBridgeOptionEnumerationLiteral() override;

    [[nodiscard]] int getValueCount() const { return count_; }
    /// The literal at `index`, from 0 to the count minus 1, or null.
    [[nodiscard]] const KelTextLiteral* getValue(int index) const;

private:
    KelTextLiteral* const* values_;
    int count_;
};
