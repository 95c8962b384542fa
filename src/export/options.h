#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace exporter {

/// The values that an option of a format accepts.
enum class Accepts : std::uint8_t {
    word,   ///< one of the words in `Option::values`
    number, ///< a whole number from 1 to 10^9
    text,   ///< any text
};

/// An option of a format. All texts are those of a table that lives as long as the program.
///
/// A name that ends in ".WORD" is a family of options: any text that is not empty replaces WORD.
struct Option {
    std::string_view name;
    std::string_view values;      ///< the words it accepts, with "|" between them; for others a name, such as "FILE"
    std::string_view byDefault;   ///< one of the values; empty when an option without a setting has no value
    std::string_view description; ///< half a sentence for people
    Accepts accepts = Accepts::word;
    bool isRepeatable = false; ///< each setting adds a value; otherwise the last one counts
    bool namesOutput =
        false; ///< a text that is the path of a further file to write, of one model; a format has one such option

    [[nodiscard]] bool isFamily() const { return name.ends_with(".WORD"); }
};

/// The words that the option accepts; none for one that accepts numbers or texts.
[[nodiscard]] std::vector<std::string_view> valuesOf(const Option& option);

/// Whether the setting, of the form "NAME=VALUE", is one of the option, whatever its value.
[[nodiscard]] bool isSetBy(const Option& option, std::string_view setting);

/// A setting that none of the options accepts. The text says why and lists the options; it quotes the setting
/// unchanged, so it may be unprintable.
class WrongOption : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The values of a format's options. `get`, `isOn`, `number`, `all` and `family` take the name of an option as its
/// table has it.
class OptionValues {
public:
    /// Reads settings of the form "NAME=VALUE". `options` must outlive the object. Throws `WrongOption` for an unknown
    /// option or value.
    OptionValues(std::span<const Option> options, std::span<const std::string> settings);

    /// The value, which is the default without a setting.
    [[nodiscard]] const std::string& get(std::string_view name) const { return values(name).back().second; }
    /// Whether an option that accepts "true" and "false" is set to "true".
    [[nodiscard]] bool isOn(std::string_view name) const { return get(name) == "true"; }
    /// The value of an option that accepts numbers.
    [[nodiscard]] std::uint64_t number(std::string_view name) const { return std::stoull(get(name)); }
    /// The values of a repeatable option in the order of its settings; none without a setting.
    [[nodiscard]] std::vector<std::string> all(std::string_view name) const;
    /// The settings of a family: the word in the name, and the value.
    [[nodiscard]] std::vector<std::pair<std::string, std::string>> family(std::string_view name) const;

private:
    using Values = std::vector<std::pair<std::string, std::string>>; // word of a family or empty, value; default first

    [[nodiscard]] const Values& values(std::string_view name) const;

    std::span<const Option> options_;
    std::vector<Values> values_; // in the order of the options
};

} // namespace exporter
