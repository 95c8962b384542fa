#include "petal/import/importOptions.h"

#include "host/bridge/KelImportBridge.h"
#include "host/encoding/KelEncodingConverter.h"
#include "host/encoding/KelTextDecoder.h"
#include "host/encoding/localeText.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"
#include "notation/Header.h"
#include "petal/Failure.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <langinfo.h>

namespace petal {

namespace {

constexpr const char* utf8Locale = "C.UTF-8";

bool leadsTo(const KelString& option, const KelString& path) {
    return utf8ToLocale(option.text()) == path;
}

} // namespace

KelString fileOption(const std::string& path) {
    KelString bytes{std::string_view(path)};
    const std::string utf8 = KelTextDecoder(::nl_langinfo(CODESET)).toUtf8(path);
    KelString converted{std::string_view(utf8)};
    if (leadsTo(converted, bytes)) {
        return converted;
    }
    // The name is not in the local encoding. In a UTF-8 locale any bytes pass as they are.
    if (!leadsTo(bytes, bytes) && (std::setlocale(LC_CTYPE, utf8Locale) == nullptr || !leadsTo(bytes, bytes))) {
        throw Failure(Outcome::importFailed, "the name '" + path + "' cannot be given in the local encoding",
                      "Run petal in a UTF-8 locale, for example with LC_ALL=C.UTF-8.");
    }
    return bytes;
}

namespace {

constexpr std::array typeNames{ShortName{"cpp", KelImportBridge::target::cPlusPlus},
                               ShortName{"oracle", KelImportBridge::target::oracle}};

constexpr OptionArgument fileArgument{"FILE", KelImportBridge::option::file, nullptr, {}};
constexpr OptionArgument typesArgument{"--types", KelImportBridge::option::supportedTypes, nullptr, typeNames};
constexpr OptionArgument encodingArgument{
    "--encoding",
    KelImportBridge::option::encoding,
    "With auto, petal's default, it is the encoding that the charSet in the file's header means, or\n"
    "without one the default below. Other names that ICU knows are accepted as well, except\n"
    "encodings without ASCII such as UTF-16.",
    {}};
constexpr std::array arguments{fileArgument, typesArgument, encodingArgument};

constexpr const char* optionsAdvice = "Run 'petal options' to see the values.";

[[noreturn]] void refuse(const OptionArgument& argument, const std::string& reason) {
    throw Failure(Outcome::wrongUsage, std::string(argument.argument) + ": " + reason, optionsAdvice);
}

KelOption& findOption(const OptionArgument& argument, const KelOptionList& options) {
    KelOption* option = options.findOption(argument.option);
    if (option == nullptr) {
        refuse(argument, "this bridge has no option '" + std::string(argument.option) + "'");
    }
    return *option;
}

std::string allowedValues(const KelOption& option) {
    std::string values;
    for (const KelOptionChoice& choice : option.getDescription().choices) {
        values += (values.empty() ? "\"" : ", \"") + std::string(choice.identifier.view()) + "\"";
    }
    return values;
}

void setTypes(const std::string& types, const KelOptionList& options) {
    KelOption& option = findOption(typesArgument, options);
    const auto* shortName = std::ranges::find(typeNames, types, &ShortName::name);
    const bool isSet = option.setValue(KelString(std::string_view(types))) ||
                       (shortName != typeNames.end() && option.setValue(shortName->value));
    if (!isSet) {
        std::string names = allowedValues(option);
        for (const ShortName& name : typeNames) {
            const bool isOffered = names.find('"' + std::string(name.value) + '"') != std::string::npos;
            names += isOffered ? ", \"" + std::string(name.name) + "\"" : std::string();
        }
        refuse(typesArgument, "'" + types + "' is not one of " + names);
    }
}

void chooseEncoding(const std::string& name, const KelOptionList& options) {
    KelOption& option = findOption(encodingArgument, options);
    const KelString value{std::string_view(name)};
    if (option.setValue(value)) {
        return;
    }
    if (name != "unknown" &&
        !KelEncodingConverter(value).isPlainText(notation::headerStart)) { // also false for an unknown encoding
        refuse(encodingArgument, "there is no encoding '" + name + "'");
    }
    option.setFreeValue(value);
}

} // namespace

std::span<const OptionArgument> optionArguments() {
    return arguments;
}

void setImportOptions(const ImportRequest& request, KelOptionList& options) {
    findOption(fileArgument, options).setFreeValue(fileOption(request.file));
    if (request.types) {
        setTypes(*request.types, options);
    }
    if (request.encoding != "auto") {
        chooseEncoding(request.encoding, options);
    }
}

void setSource(KelOptionList& options, const std::string& path) {
    options.setFreeValue(fileArgument.option, KelString(std::string_view(path)));
}

void setEncoding(KelOptionList& options, const char* encoding) {
    options.setFreeValue(encodingArgument.option, encoding);
}

KelString chosenEncoding(const KelOptionList& options) {
    return options.getValue(encodingArgument.option);
}

} // namespace petal
