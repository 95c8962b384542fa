#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace exporter {

/// An option of a format. All texts are those of a table that lives as long as the program.
struct Option {
    std::string_view name;
    std::string_view values;      ///< the words it takes, with "|" between them
    std::string_view byDefault;   ///< one of these words
    std::string_view description; ///< half a sentence for people
};

/// The words that the option takes.
[[nodiscard]] std::vector<std::string_view> valuesOf(const Option& option);

/// A setting that none of the options takes. The text says why and lists the options; it quotes the setting unchanged,
/// so it may be unprintable.
class WrongOption : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A value for each option of a format.
class OptionValues {
public:
    /// Reads settings of the form "NAME=VALUE". The last one of a name counts; an option without a setting has its
    /// default. `options` must outlive the object. Throws `WrongOption` for an unknown option or value.
    OptionValues(std::span<const Option> options, std::span<const std::string> settings);

    /// The value of the option, one of its words. `name` must be that of an option.
    [[nodiscard]] std::string_view get(std::string_view name) const;
    /// Whether an option that takes "true" and "false" is set to "true".
    [[nodiscard]] bool isOn(std::string_view name) const { return get(name) == "true"; }

private:
    std::span<const Option> options_;
    std::vector<std::string_view> values_; // in the order of the options
};

} // namespace exporter
