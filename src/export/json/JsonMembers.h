#pragma once

#include "host/model/KelNumbering.h"
#include "host/model/KelObject.h"
#include "text/JsonTaker.h"

#include <cstdint>
#include <string_view>

namespace exporter {

/// Writes the members of one JSON object in the order of its calls. The `optional...` functions leave out a member
/// whose value is the one that readers assume anyway. References to objects without a number are left out.
class JsonMembers {
public:
    /// Both must outlive it.
    JsonMembers(text::JsonTaker& json, const KelNumbering& numbers) : json_(json), numbers_(numbers) {}

    void text(std::string_view member, std::string_view value) {
        json_.key(member);
        json_.text(value);
    }
    void text(std::string_view member, const KelString& value) { text(member, value.view()); }
    void optionalText(std::string_view member, const KelString& value) {
        if (!value.isEmpty()) {
            text(member, value);
        }
    }
    void word(std::string_view member, const char* value) { text(member, std::string_view(value)); }
    /// A null word is left out.
    void optionalWord(std::string_view member, const char* value) {
        if (value != nullptr) {
            word(member, value);
        }
    }
    void number(std::string_view member, std::int64_t value) {
        json_.key(member);
        json_.number(value);
    }
    void optionalNumber(std::string_view member, std::int32_t value) {
        if (value != 0) {
            number(member, value);
        }
    }
    void optionalFlag(std::string_view member, bool value) {
        if (value) {
            json_.key(member);
            json_.trueFlag();
        }
    }

    void reference(std::string_view member, const KelObject* target) {
        if (const std::uint32_t number = numberOf(target); number != 0) {
            this->number(member, number);
        }
    }
    /// References to the objects that `links`, a `KelLinks`, holds; no member without any.
    template <class Links>
    void references(std::string_view member, const Links& links) {
        bool isStarted = false;
        for (const KelObject* target : links) {
            const std::uint32_t number = numberOf(target);
            if (number == 0) {
                continue;
            }
            if (!isStarted) {
                startList(member);
                isStarted = true;
            }
            json_.number(number);
        }
        if (isStarted) {
            json_.endList();
        }
    }

    /// A list of the texts of the objects that `links`, a `KelLinks`, holds; no member without any.
    template <class Links, class T>
    void optionalTexts(std::string_view member, const Links& links, KelString T::*text) {
        optionalList(member, links, [&](const T& object) { json_.text((object.*text).view()); });
    }
    /// A list with an object for each one that `links` holds, whose members `write(object, members)` writes; no member
    /// without any.
    template <class Links, class Write>
    void optionalObjects(std::string_view member, const Links& links, Write write) {
        optionalList(member, links, [&](const auto& object) {
            json_.startObject();
            write(object, *this);
            json_.endObject();
        });
    }

    /// An object without a number as a member.
    void startObject(std::string_view member) {
        json_.key(member);
        json_.startObject();
    }
    void endObject() { json_.endObject(); }

private:
    [[nodiscard]] std::uint32_t numberOf(const KelObject* target) const {
        return target != nullptr ? numbers_.numberOf(*target) : 0;
    }
    void startList(std::string_view member) {
        json_.key(member);
        json_.startList();
    }

    template <class Links, class Write>
    void optionalList(std::string_view member, const Links& links, Write write) {
        if (links.isEmpty()) {
            return;
        }
        startList(member);
        for (const auto* object : links) {
            write(*object);
        }
        json_.endList();
    }

    text::JsonTaker& json_;
    const KelNumbering& numbers_;
};

} // namespace exporter
