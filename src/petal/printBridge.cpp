#include "host/bridge/KelBridgeSpecification.h"
#include "host/options/KelOption.h"
#include "host/options/KelOptionList.h"
#include "petal/Failure.h"
#include "petal/commands.h"
#include "petal/import/PlugIn.h"
#include "petal/import/importOptions.h"
#include "petal/output/Descriptor.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/fileFailure.h"
#include "petal/schema/schemas.h"
#include "text/IndentedJson.h"

#include <CLI/Version.hpp>
#include <rapidjson/rapidjson.h>
#include <unicode/uversion.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <string>

namespace petal {

namespace {

std::string text(const KelString& bytes) {
    return std::string(bytes.view());
}

/// The lines of a text without the blanks around them, each indented; empty lines are left out.
std::string indentedLines(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    std::string lines;
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
        line = line.substr(0, line.find_last_not_of(blanks) + 1);
        if (!line.empty()) {
            lines += "  " + std::string(line) + "\n";
        }
    }
    return lines;
}

/// "  (short: cpp)", or nothing.
std::string shortNameOf(std::string_view value, std::span<const ShortName> names) {
    const auto found = std::ranges::find(names, value, &ShortName::value);
    return found != names.end() ? std::string("  (short: ") + found->name + ")" : std::string();
}

std::string choicesOf(const KelOptionDescription& description, std::span<const ShortName> shortNames) {
    std::size_t width = 0;
    for (const KelOptionChoice& choice : description.choices) {
        width = std::max(width, choice.identifier.view().size());
    }
    std::string lines;
    for (const KelOptionChoice& choice : description.choices) {
        const std::string value = text(choice.identifier);
        const std::string remark = (choice.label == choice.identifier ? std::string() : "  " + text(choice.label)) +
                                   shortNameOf(value, shortNames);
        lines += "    " + value + (remark.empty() ? "" : std::string(width - value.size(), ' ') + remark) + "\n";
    }
    return lines.empty() ? lines : "  Values:\n" + lines;
}

std::string filesOf(const KelOptionFiles& files) {
    std::string names;
    for (const KelString& extension : files.extensions) {
        names += (names.empty() ? "*." : ", *.") + text(extension);
    }
    return names.empty() ? names : "  Files: " + names + "\n";
}

std::string describe(const KelOption& option) {
    const KelOptionDescription& description = option.getDescription();
    const auto found = std::ranges::find_if(optionArguments(),
                                            [&](const OptionArgument& row) { return description.name == row.option; });
    const bool isOffered = found != optionArguments().end();
    std::string lines = text(description.name) + (isOffered ? std::string(" (") + found->argument + ")" : "") + "\n";
    lines += indentedLines(description.text.view());
    if (isOffered && found->remark != nullptr) {
        lines += indentedLines(found->remark);
    }
    const std::span<const ShortName> shortNames = isOffered ? found->shortNames : std::span<const ShortName>();
    lines += choicesOf(description, shortNames) + filesOf(description.files);
    if (!description.defaultValue.isEmpty()) {
        lines += "  Default: " + text(description.defaultValue) + "\n";
    }
    return lines + (description.required ? "  Required.\n" : "");
}

} // namespace

void printOptions() {
    KelOptionList options;
    PlugIn::load().getBridge().getOptionList(options);
    std::string lines;
    const KelVector& all = options.getOptions();
    for (int index = 0; index < all.getCount(); ++index) {
        lines += (lines.empty() ? "" : "\n") + describe(*static_cast<const KelOption*>(all[index]));
    }
    writeToStandardOutput(lines);
}

namespace {

struct Field {
    const char* label;
    const KelString& (KelBridgeSpecification::*text)() const;
};

constexpr std::array fields{
    Field{"Vendor", &KelBridgeSpecification::getVendorName},
    Field{"Tool", &KelBridgeSpecification::getToolName},
    Field{"Tool versions", &KelBridgeSpecification::getToolVersions},
    Field{"Web page", &KelBridgeSpecification::getToolWeb},
    Field{"Methodology", &KelBridgeSpecification::getMethodologySummary},
    Field{"Bridge version", &KelBridgeSpecification::getVersion},
    Field{"Description", &KelBridgeSpecification::getDescription},
};

std::string line(const std::string& label, const KelString& text) {
    return text.isEmpty() ? std::string() : label + ": " + std::string(text.view()) + "\n";
}

KelBridgeSpecification specificationOf(const PlugIn& plugIn) {
    KelBridgeSpecification specification;
    plugIn.getBridge().getSpecification(PlugIn::bridgeId, specification);
    return specification;
}

} // namespace

void printSpecification() {
    const PlugIn plugIn = PlugIn::load();
    const KelBridgeSpecification specification = specificationOf(plugIn);
    std::string lines;
    for (const Field& field : fields) {
        lines += line(field.label, (specification.*field.text)());
    }
    for (const KelString& extra : specification.getExtraTexts()) {
        lines += line("Note", extra);
    }
    lines += line("Mapping specification", plugIn.getBridge().getMappingSpecificationXmlFile());
    writeToStandardOutput(lines);
}

namespace {

/// The name and the version in the schema's id: "urn:petal:model:1".
std::pair<std::string, int> formVersion(const text::Embedded& schema) {
    constexpr std::string_view start = "\"urn:petal:";
    const std::string_view id = schema.text.substr(schema.text.find(start) + start.size());
    return {std::string(schema.name), std::atoi(id.substr(id.find(':') + 1).data())};
}

std::map<std::string, std::string> libraryVersions() {
    UVersionInfo icu{};
    u_getVersion(icu);
    std::array<char, U_MAX_VERSION_STRING_LENGTH> icuText{};
    u_versionToString(icu, icuText.data());
    return {{"cli11", CLI11_VERSION}, {"icu", icuText.data()}, {"rapidjson", RAPIDJSON_VERSION_STRING}};
}

/// `bridge` is empty when it could not be loaded.
void writeVersions(const std::string& bridge, text::Output& output) {
    text::BufferedOutput buffered(output);
    text::IndentedJson json(buffered);
    json.startObject();
    const auto member = [&](std::string_view name, std::string_view value) {
        json.key(name);
        json.text(value);
    };
    member("petal", PETAL_VERSION);
    if (!bridge.empty()) {
        member("bridge", bridge);
    }
    json.key("formats");
    json.startObject();
    for (const text::Embedded& schema : schemas()) {
        const auto [name, version] = formVersion(schema);
        json.key(name);
        json.number(version);
    }
    json.endObject();
    json.key("libraries");
    json.startObject();
    for (const auto& [name, version] : libraryVersions()) {
        member(name, version);
    }
    json.endObject();
    json.endObject();
    buffered.put('\n');
    buffered.flush();
}

void printVersionDocument(const std::string& bridge) {
    try {
        const auto output = ModelOutput::open(std::nullopt);
        writeVersions(bridge, *output);
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure("standard output", error);
    }
}

} // namespace

void printVersions(bool asJson) {
    if (asJson) {
        std::string bridge;
        try {
            bridge = specificationOf(PlugIn::load()).getVersion().text();
        } catch (const Failure&) {
            printVersionDocument(""); // as below
            throw;
        }
        printVersionDocument(bridge);
        return;
    }
    std::string lines = std::string("petal ") + PETAL_VERSION + "\n";
    try {
        lines += line("bridge", specificationOf(PlugIn::load()).getVersion());
    } catch (const Failure&) {
        writeToStandardOutput(lines); // petal has its version even without a bridge
        throw;
    }
    writeToStandardOutput(lines);
}

} // namespace petal
