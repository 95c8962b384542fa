#include "interface/optionForms.h"

#include "export/exporters.h"

#include <algorithm>
#include <sstream>

namespace petal {

std::vector<FormatOption> formatOptions() {
    std::vector<FormatOption> options;
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        for (const exporter::Option& option : exporter.options) {
            const std::string name(option.isFamily() ? option.name.substr(0, option.name.rfind('.') + 1) : option.name);
            auto known = std::ranges::find(options, name, &FormatOption::name);
            if (known == options.end()) {
                known = options.insert(options.end(), FormatOption{name, {}});
            }
            for (const std::string_view value : exporter::valuesOf(option)) {
                if (!option.isFamily() && std::ranges::find(known->values, value) == known->values.end()) {
                    known->values.emplace_back(value);
                }
            }
        }
    }
    return options;
}

bool setsFormatOption(const OptionText& option) {
    return option.names == std::vector<std::string>{"-O"};
}

std::vector<std::string> choices(const OptionText& option) {
    if (setsFormatOption(option)) {
        std::vector<std::string> settings;
        for (const FormatOption& known : formatOptions()) {
            for (const std::string& value : known.values) {
                settings.push_back(known.name + "=" + value);
            }
            if (known.values.empty()) {
                settings.push_back(known.name + (known.name.ends_with('.') ? "" : "="));
            }
        }
        return settings;
    }
    std::vector<std::string> words;
    std::istringstream value(option.value);
    for (std::string word; std::getline(value, word, '|');) {
        words.push_back(word);
    }
    return words.size() > 1 ? words : std::vector<std::string>();
}

bool takesPath(const OptionText& option) {
    return option.value == "FILE" || option.value == "FOLDER";
}

std::string shortDescription(const OptionText& option) {
    const std::string line = option.description.substr(0, option.description.find('\n'));
    return line.substr(0, line.find(';')).substr(0, line.find_last_not_of(" :,.") + 1);
}

std::string joined(const std::vector<std::string>& words, const std::string& between) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : between) + word;
    }
    return text;
}

std::string escaped(const std::string& text, const std::string& characters, const std::string& escape) {
    std::string result;
    for (const char character : text) {
        result += (characters.find(character) != std::string::npos ? escape : "") + character;
    }
    return result;
}

} // namespace petal
