#include "export/options.h"

#include <algorithm>
#include <cstddef>

namespace exporter {

namespace {

/// "places=true|false".
std::string form(const Option& option) {
    return std::string(option.name).append("=").append(option.values);
}

std::string listed(std::span<const Option> options) {
    std::string list;
    for (const Option& option : options) {
        list += (list.empty() ? "the options are " : ", ") + form(option);
    }
    return list.empty() ? "there are no options" : list;
}

} // namespace

std::vector<std::string_view> valuesOf(const Option& option) {
    std::vector<std::string_view> values;
    for (std::string_view left = option.values; !left.empty();) {
        values.push_back(left.substr(0, left.find('|')));
        left.remove_prefix(std::min(values.back().size() + 1, left.size()));
    }
    return values;
}

OptionValues::OptionValues(std::span<const Option> options, std::span<const std::string> settings)
    : options_(options), values_(options.size()) {
    std::ranges::transform(options, values_.begin(), &Option::byDefault);
    for (const std::string& setting : settings) {
        const std::size_t equals = setting.find('=');
        if (equals == std::string::npos) {
            throw WrongOption("'" + setting + "' is not NAME=VALUE; " + listed(options));
        }
        const auto option = std::ranges::find(options, setting.substr(0, equals), &Option::name);
        if (option == options.end()) {
            throw WrongOption("there is no option '" + setting.substr(0, equals) + "'; " + listed(options));
        }
        const std::vector<std::string_view> values = valuesOf(*option);
        const auto value = std::ranges::find(values, setting.substr(equals + 1));
        if (value == values.end()) {
            throw WrongOption("'" + setting + "' is none of " + form(*option));
        }
        values_[static_cast<std::size_t>(option - options.begin())] = *value;
    }
}

std::string_view OptionValues::get(std::string_view name) const {
    const auto option = std::ranges::find(options_, name, &Option::name);
    return values_[static_cast<std::size_t>(option - options_.begin())];
}

} // namespace exporter
