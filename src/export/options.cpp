#include "export/options.h"

#include <algorithm>
#include <cstddef>

namespace exporter {

namespace {

constexpr std::string_view familyEnd = "WORD";
constexpr std::size_t mostDigits = 9;

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

std::string_view familyStart(const Option& option) {
    return option.name.substr(0, option.name.size() - familyEnd.size());
}

bool isNamed(const Option& option, std::string_view name) {
    return option.isFamily() ? name.starts_with(familyStart(option)) && name.size() > familyStart(option).size()
                             : name == option.name;
}

bool isAccepted(const Option& option, std::string_view value) {
    if (option.accepts == Accepts::text) {
        return true;
    }
    if (option.accepts == Accepts::word) {
        return std::ranges::count(valuesOf(option), value) > 0;
    }
    return !value.empty() && value.size() <= mostDigits && value.front() != '0' &&
           value.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

std::vector<std::string_view> valuesOf(const Option& option) {
    std::vector<std::string_view> values;
    if (option.accepts != Accepts::word) {
        return values;
    }
    for (std::string_view left = option.values; !left.empty();) {
        values.push_back(left.substr(0, left.find('|')));
        left.remove_prefix(std::min(values.back().size() + 1, left.size()));
    }
    return values;
}

bool isSetBy(const Option& option, std::string_view setting) {
    const std::size_t equals = setting.find('=');
    return equals != std::string_view::npos && isNamed(option, setting.substr(0, equals));
}

OptionValues::OptionValues(std::span<const Option> options, std::span<const std::string> settings)
    : options_(options), values_(options.size()) {
    std::ranges::transform(options, values_.begin(), [](const Option& option) {
        return Values{{"", std::string(option.byDefault)}};
    });
    for (const std::string& setting : settings) {
        const std::size_t equals = setting.find('=');
        if (equals == std::string::npos) {
            throw WrongOption("'" + setting + "' is not NAME=VALUE; " + listed(options));
        }
        const std::string name = setting.substr(0, equals);
        const auto option = std::ranges::find_if(options, [&](const Option& row) { return isNamed(row, name); });
        if (option == options.end()) {
            throw WrongOption("there is no option '" + name + "'; " + listed(options));
        }
        std::string value = setting.substr(equals + 1);
        if (!isAccepted(*option, value)) {
            throw WrongOption("'" + setting + "' is not one of " + form(*option));
        }
        values_[static_cast<std::size_t>(option - options.begin())].emplace_back(
            option->isFamily() ? name.substr(familyStart(*option).size()) : "", std::move(value));
    }
}

const OptionValues::Values& OptionValues::values(std::string_view name) const {
    const auto option = std::ranges::find(options_, name, &Option::name);
    return values_[static_cast<std::size_t>(option - options_.begin())];
}

std::vector<std::string> OptionValues::all(std::string_view name) const {
    const Values& set = values(name);
    std::vector<std::string> result;
    std::transform(set.begin() + 1, set.end(), std::back_inserter(result), [](const auto& one) { return one.second; });
    return result;
}

std::vector<std::pair<std::string, std::string>> OptionValues::family(std::string_view name) const {
    const Values& set = values(name);
    return {set.begin() + 1, set.end()};
}

} // namespace exporter
