#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

class KelObject;
class KelString;
class KelType;

namespace exporter {

/// The pieces that the lines of an outline are made of. All of them are printable; most are empty when there is
/// nothing to say.

/// The text, made printable.
[[nodiscard]] std::string plain(const KelString& text);
/// `prefix` and the text, or nothing when the text is empty.
[[nodiscard]] std::string after(std::string_view prefix, const KelString& text);
/// The object's name; "?" for none.
[[nodiscard]] std::string nameOf(const KelObject* object);
/// ": " and the type's name, or nothing without a type.
[[nodiscard]] std::string typed(const KelType* type);

struct Remark {
    bool applies;
    std::string text;
};
/// " (first, second)" of the remarks that apply.
[[nodiscard]] std::string remarks(std::initializer_list<Remark> all);

/// The names of what `links`, a `KelLinks`, holds: "first, second"; "?" for nothing.
template <class Links>
[[nodiscard]] std::string namesOf(const Links& links) {
    std::string names;
    for (const auto* object : links) {
        names += (names.empty() ? "" : ", ") + nameOf(object);
    }
    return names.empty() ? "?" : names;
}

} // namespace exporter
