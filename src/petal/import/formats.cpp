#include "petal/import/formats.h"

#include "export/exporters.h"
#include "petal/commands.h"
#include "petal/output/Descriptor.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/fileFailure.h"
#include "text/IndentedJson.h"
#include "text/Output.h"

#include <algorithm>

namespace petal {

namespace {

std::string joined(std::span<const std::string_view> words) {
    std::string text;
    for (const std::string_view word : words) {
        text.append(text.empty() ? "" : ", ").append(word);
    }
    return text;
}

std::string padded(std::string_view text, std::size_t width) {
    return std::string(text).append(std::max(width, text.size()) - text.size() + 2, ' ');
}

/// One line per format.
std::string table() {
    std::size_t nameWidth = 0;
    std::size_t endingWidth = 0;
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        nameWidth = std::max(nameWidth, exporter.format.size());
        endingWidth = std::max(endingWidth, joined(exporter.endings).size());
    }
    std::string lines;
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        lines += padded(exporter.format, nameWidth) + padded(joined(exporter.endings), endingWidth);
        lines.append(exporter.description) += '\n';
    }
    return lines;
}

std::string optionsOf(const exporter::Exporter& exporter) {
    std::string lines = std::string(exporter.format).append(": ").append(exporter.description) + "\n";
    lines += exporter.endings.empty() ? "" : "  Endings: " + joined(exporter.endings) + "\n";
    lines += exporter.options.empty() ? "  no options\n" : "";
    for (const exporter::Option& option : exporter.options) {
        lines.append("  -O ").append(option.name).append("=").append(option.values);
        lines.append(option.byDefault.empty() ? "" : "  (default: " + std::string(option.byDefault) + ")");
        lines.append(option.isRepeatable ? "  (repeatable)\n      " : "\n      ");
        lines.append(option.description).append("\n");
    }
    return lines;
}

void member(text::IndentedJson& json, const char* name, std::string_view value) {
    json.key(name);
    json.text(value);
}

/// Omits an empty list.
template <class Row, class Write>
void list(text::IndentedJson& json, const char* name, std::span<const Row> rows, Write write) {
    if (rows.empty()) {
        return;
    }
    json.key(name);
    json.startList();
    std::ranges::for_each(rows, write);
    json.endList();
}

void writeOption(const exporter::Option& option, text::IndentedJson& json) {
    json.startObject();
    member(json, "name", option.name);
    const std::vector<std::string_view> values = exporter::valuesOf(option);
    list(json, "values", std::span(values), [&](std::string_view value) { json.text(value); });
    if (values.empty()) {
        member(json, "accepts", option.accepts == exporter::Accepts::number ? "number" : "text");
    }
    if (!option.byDefault.empty()) {
        member(json, "default", option.byDefault);
    }
    if (option.isRepeatable) {
        json.key("isRepeatable");
        json.trueFlag();
    }
    member(json, "description", option.description);
    json.endObject();
}

void writeFormat(const exporter::Exporter& exporter, text::IndentedJson& json) {
    json.startObject();
    member(json, "name", exporter.format);
    member(json, "description", exporter.description);
    list(json, "endings", exporter.endings, [&](std::string_view ending) { json.text(ending); });
    list(json, "options", exporter.options, [&](const exporter::Option& option) { writeOption(option, json); });
    json.endObject();
}

void writeDocument(std::span<const exporter::Exporter> rows, text::Output& output) {
    text::BufferedOutput buffered(output);
    text::IndentedJson json(buffered);
    json.startObject();
    member(json, "format", "petal-formats");
    json.key("formatVersion");
    json.number(1);
    list(json, "formats", rows, [&](const exporter::Exporter& exporter) { writeFormat(exporter, json); });
    json.endObject();
    buffered.put('\n');
    buffered.flush();
}

} // namespace

namespace {

Destination destinationOf(const ImportRequest& request, const std::optional<std::string>& path) {
    if (request.format) {
        return {.format = *request.format, .path = path};
    }
    const exporter::Exporter* named = exporter::findExporterByEnding(path.value_or(""));
    return {.format = std::string(named != nullptr        ? named->format
                                  : leadsToTerminal(path) ? "tree"
                                                          : "json"),
            .path = path};
}

bool writesNothing(const Destination& destination) {
    return exporter::findExporter(destination.format)->shape == exporter::Shape::nothing;
}

/// Whether the setting is for an option of the format, whatever its value.
bool isFor(const std::string& setting, const exporter::Exporter& exporter) {
    return std::ranges::any_of(exporter.options,
                               [&](const exporter::Option& option) { return exporter::isSetBy(option, setting); });
}

} // namespace

Failure wrongOption(const std::string& format, const exporter::WrongOption& error) {
    return {Outcome::wrongUsage, "-O: format " + format + ": " + error.what(),
            "'petal formats " + format + "' says more."};
}

std::vector<Destination> destinationsOf(const ImportRequest& request) {
    std::vector<Destination> destinations;
    if (request.outputs.empty()) {
        destinations.push_back(destinationOf(request, std::nullopt));
    }
    for (const std::string& output : request.outputs) {
        destinations.push_back(destinationOf(request, output));
    }
    if (destinations.size() > 1 && request.format) {
        throw Failure(Outcome::wrongUsage,
                      "--format is for one output, and there are " + std::to_string(destinations.size()),
                      "Leave it out: the format of each output follows from the ending of its name.");
    }
    checkFormatOptions(request, destinations);
    std::erase_if(destinations, writesNothing);
    for (Destination& destination : destinations) {
        destination.beside = furtherFile(request, *exporter::findExporter(destination.format));
    }
    return destinations;
}

std::optional<std::string> furtherFile(const ImportRequest& request, const exporter::Exporter& exporter) {
    const exporter::OptionValues values = formatOptions(request, exporter);
    for (const exporter::Option& option : exporter.options) {
        if (option.namesOutput && !values.get(option.name).empty()) {
            return values.get(option.name);
        }
    }
    return std::nullopt;
}

void checkFormatOptions(const ImportRequest& request, std::span<const Destination> destinations) {
    for (const std::string& setting : request.formatOptions) {
        const bool isForAny = std::ranges::any_of(destinations, [&](const Destination& destination) {
            return isFor(setting, *exporter::findExporter(destination.format));
        });
        for (const Destination& destination : destinations) {
            const exporter::Exporter& exporter = *exporter::findExporter(destination.format);
            if (isForAny && !isFor(setting, exporter)) {
                continue;
            }
            try {
                static_cast<void>(exporter::OptionValues(exporter.options, std::span(&setting, 1)));
            } catch (const exporter::WrongOption& error) {
                throw wrongOption(destination.format, error);
            }
        }
    }
    for (const Destination& destination : destinations) {
        const exporter::Exporter& exporter = *exporter::findExporter(destination.format);
        try {
            if (exporter.check != nullptr) {
                exporter.check(formatOptions(request, exporter));
            }
        } catch (const exporter::WrongOption& error) {
            throw wrongOption(destination.format, error);
        }
    }
}

exporter::OptionValues formatOptions(const ImportRequest& request, const exporter::Exporter& exporter) {
    std::vector<std::string> settings;
    std::ranges::copy_if(request.formatOptions, std::back_inserter(settings),
                         [&](const std::string& setting) { return isFor(setting, exporter); });
    return {exporter.options, settings};
}

void printFormats(const FormatsRequest& request) {
    const exporter::Exporter* one = request.format ? exporter::findExporter(*request.format) : nullptr;
    if (!request.asJson) {
        writeToStandardOutput(one != nullptr ? optionsOf(*one) : table());
        return;
    }
    try {
        const auto output = ModelOutput::open(std::nullopt);
        writeDocument(one != nullptr ? std::span(one, 1) : exporter::exporters(), *output);
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure("standard output", error);
    }
}

} // namespace petal
