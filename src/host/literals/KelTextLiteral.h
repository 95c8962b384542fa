#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

class KelDOMElement;

/// A text for users, with an identifier under which it is listed and translated. Texts are UTF-8.
///
/// Literals are static objects, made when their library is loaded. Lists and options refer to them by address, so they
/// are not copyable. Only `update` changes one; apart from that, any number of threads may read it.
class KEL_API KelTextLiteral {
public:
    KelTextLiteral(const KelString& identifier, const KelString& text) : identifier_(identifier), text_(text) {}
    KelTextLiteral(const KelTextLiteral&) = delete;
    KelTextLiteral& operator=(const KelTextLiteral&) = delete;
    virtual ~KelTextLiteral();

    /// Replaces the text by `text` from a localisation document, whose entry for this literal is `entry`. With a null
    /// entry the literal keeps its text. The entry is not read here, and is valid during the call only. No other thread
    /// may use the literal meanwhile. May throw `std::bad_alloc` and then changes nothing.
    virtual void update(const KelString& text, const KelDOMElement* entry);

    [[nodiscard]] const KelString& getIdentifier() const { return identifier_; }
    [[nodiscard]] const KelString& getText() const { return text_; }

private:
    KelString identifier_;
    KelString text_;
};
