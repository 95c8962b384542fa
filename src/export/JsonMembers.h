#pragma once

#include "host/text/KelString.h"

#include <cstdint>
#include <span>
#include <vector>

class KelObject;

namespace exporter {

/// Takes the members of one JSON object in their order. The `optional...` forms leave a member out when its value
/// is the one that a reader assumes anyway.
class JsonMembers {
public:
    virtual ~JsonMembers() = default;

    virtual void text(const char* member, const KelString& value) = 0;
    virtual void word(const char* member, const char* value) = 0; // ASCII
    virtual void number(const char* member, std::int64_t value) = 0;
    virtual void trueFlag(const char* member) = 0;
    /// References to what the document does not hold are left out.
    virtual void reference(const char* member, const KelObject* target) = 0;
    virtual void references(const char* member, std::span<const KelObject* const> targets) = 0;

    /// A list of texts, or of objects without identity.
    virtual void startList(const char* member) = 0;
    virtual void endList() = 0;
    virtual void entry(const KelString& text) = 0;
    virtual void startEntry() = 0;
    virtual void endEntry() = 0;
    /// An object without identity as a member.
    virtual void startObject(const char* member) = 0;
    virtual void endObject() = 0;

    void optionalText(const char* member, const KelString& value) {
        if (!value.isEmpty()) {
            text(member, value);
        }
    }
    /// A null word is left out.
    void optionalWord(const char* member, const char* value) {
        if (value != nullptr) {
            word(member, value);
        }
    }
    void optionalNumber(const char* member, std::int32_t value, std::int32_t defaultValue) {
        if (value != defaultValue) {
            number(member, value);
        }
    }
    void optionalFlag(const char* member, bool value) {
        if (value) {
            trueFlag(member);
        }
    }
    /// References to all that `links`, a `KelLinks`, holds.
    template <class Links>
    void optionalReferences(const char* member, const Links& links) {
        std::vector<const KelObject*> targets;
        targets.reserve(static_cast<std::size_t>(links.count()));
        for (const KelObject* target : links) {
            targets.push_back(target);
        }
        references(member, targets);
    }
    /// A list of objects without identity: `write(object, members)` writes the members of each.
    template <class Links, class Write>
    void optionalList(const char* member, const Links& links, Write write) {
        if (links.isEmpty()) {
            return;
        }
        startList(member);
        for (const auto* object : links) {
            startEntry();
            write(*object, *this);
            endEntry();
        }
        endList();
    }
};

} // namespace exporter
