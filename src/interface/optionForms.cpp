#include "interface/optionForms.h"

#include <sstream>

namespace petal {

std::vector<std::string> choices(const OptionText& option) {
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
