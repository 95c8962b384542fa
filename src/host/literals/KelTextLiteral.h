#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

class KelDOMElement;

/// A text that a user may get to see, known by an identifier under which it can be listed and translated.
///
/// Literals are made once, at load, and do not change afterwards but for `update`. They are not copied: their
/// address is what lists and options refer to.
class KEL_API KelTextLiteral {
public:
    KelTextLiteral(const KelString& identifier, const KelString& text) : identifier_(identifier), text_(text) {}
    KelTextLiteral(const KelTextLiteral&) = delete;
    KelTextLiteral& operator=(const KelTextLiteral&) = delete;
    virtual ~KelTextLiteral();

    /// Takes `text` from a localisation document, whose entry for this literal is `entry`. Null says that the
    /// document has no such entry: the literal then keeps its text. The default does not look into the entry;
    /// it must not be kept after the call. No other thread may use the literal meanwhile.
    virtual void update(const KelString& text, const KelDOMElement* entry);

    [[nodiscard]] const KelString& getIdentifier() const { return identifier_; }
    [[nodiscard]] const KelString& getText() const { return text_; }

private:
    KelString identifier_;
    KelString text_;
};
