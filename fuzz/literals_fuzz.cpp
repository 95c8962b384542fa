// Texts with places for values are filled in as their contract says, from the front or the back; options take the
// values they offer and no others. The input's first line is a text, every other one a value.

#include "host/literals/HOCM.h"
#include "host/log/KelException.h"
#include "host/options/BLIB.h"
#include "host/options/KelBridgeOptionLiteral.h"
#include "host/options/KelOption.h"
#include "require.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <vector>

namespace {

/// Fills places in from the back, so that what is filled in is never looked at.
std::string filledSlowly(std::string text, const std::vector<std::string>& values) {
    for (std::size_t open = text.rfind('{'); open != std::string::npos;
         open = open == 0 ? std::string::npos : text.rfind('{', open - 1)) {
        const std::size_t close = text.find_first_not_of("0123456789", open + 1);
        if (close == std::string::npos || close == open + 1 || text[close] != '}') {
            continue;
        }
        const std::size_t digits = std::min(text.find_first_not_of('0', open + 1), close - 1);
        const std::size_t value = close - digits < 5 ? std::stoul(text.substr(digits, close - digits)) : values.size();
        if (value < values.size()) {
            text.replace(open, close + 1 - open, values[value]);
        }
    }
    return text;
}

std::string filled(const std::string& text, const std::vector<std::string>& values) {
    const KelParameterizedTextLiteral literal("ID", KelString(std::string_view(text)));
    KelTextParameters parameters = literal.prapareForParameters();
    for (int index = static_cast<int>(values.size()) - 1; index >= 0; --index) { // the order does not matter
        literal.setParameterValue(parameters, index,
                                  KelString(std::string_view(values[static_cast<std::size_t>(index)])));
    }
    return std::string(literal.createParametrizedText(parameters).view());
}

/// The message of the exception that the literal throws.
std::string thrown(const HOCM::MessageInstance_String& literal, const std::string& value) {
    try {
        literal.throwException(KelString(std::string_view(value)));
    } catch (const KelException& exception) {
        return std::string(exception.getMessage().view());
    }
}

void checkMessage(const std::string& value) {
    const HOCM::MessageInstance_String& literal = HOCM::BRIDGE_UNEXPECTED_ERROR;
    const std::string text = filledSlowly(std::string(literal.getText().view()), {value});
    fuzz::require(thrown(literal, value) == "[" + std::string(literal.getFullCode().view()) + "] " + text,
                  "an exception with another message");
}

void checkOption(const std::string& value) {
    static const KelBridgeOptionLiteral literal("ID", "Encoding", "Enumerated", "", &BLIB::BP_ENCODING_ENUM,
                                                &BLIB::BP_ENCODING_ENUM_WESTERN_EUROPEAN__WINDOWS_1252_);
    const auto option = literal.generateOption(false);
    const auto& choices = option->getDescription().choices;
    const bool isChoice =
        std::ranges::any_of(choices, [&](const KelOptionChoice& choice) { return choice.identifier.view() == value; });
    const KelString before = option->getValue();
    fuzz::require(option->setValue(KelString(std::string_view(value))) == isChoice, "a choice is taken for another");
    fuzz::require(option->getValue().view() == (isChoice ? std::string_view(value) : before.view()),
                  "an option with another value");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    std::istringstream lines(std::string(reinterpret_cast<const char*>(bytes), size));
    std::string text;
    std::getline(lines, text);
    std::vector<std::string> values;
    for (std::string value; std::getline(lines, value);) {
        values.push_back(value);
    }
    fuzz::require(filled(text, values) == filledSlowly(text, values), "a text is filled in another way");
    checkMessage(text);
    checkOption(text);
    return 0;
}
