#include "petal/units/UnitsForm.h"

#include "host/encoding/KelTextDecoder.h"
#include "petal/units/lossLines.h"
#include "text/IndentedJson.h"
#include "text/escape.h"
#include "units/localText.h"

#include <algorithm>
#include <array>

namespace petal {

namespace {

using units::Unit;

struct StateWords {
    const char* text;
    const char* json;
};
/// The words for the state of a unit, in the order of `UnitState`.
constexpr std::array stateWords{StateWords{"found", "found"}, StateWords{"missing", "missing"},
                                StateWords{"unusable", "unusable"}, StateWords{"found already", "repeated"},
                                StateWords{"cycle", "cycle"}};

/// The causes of the JSON form, in the order of `UnitFault`.
constexpr std::array causeWords{"", "unnamed", "symbolUnset", "absent", "unreadable", "noModel", "otherKind", "cycle"};

const StateWords& wordsOf(const Unit& unit) {
    return stateWords.at(static_cast<std::size_t>(unit.state));
}

std::string unitLines(const units::ResolvedFile& file, const Unit& unit) {
    const auto text = [&](const std::string& bytes) {
        return text::printableText(units::localText(bytes, file.contents.charSet));
    };
    std::string lines = "  " + text(unit.reference.kind) + " " + text(unit.reference.name) + " (" +
                        text::printableText(file.path.string()) + " line " + std::to_string(unit.reference.place.line) +
                        "): " + text(unit.reference.fileName) + "\n    " + wordsOf(unit).text;
    lines += unit.path.empty() ? "" : ": " + text::printableText(unit.path.string());
    lines += unit.remark.empty() ? "" : (unit.path.empty() ? ": " : " (") + text::printableText(unit.remark);
    return lines + (unit.remark.empty() || unit.path.empty() ? "\n" : ")\n");
}

std::string modelLines(const std::string& path, const units::UnitTree& tree) {
    std::string lines;
    std::size_t count = 0;
    std::size_t lost = 0;
    for (const units::ResolvedFile& file : tree.files) {
        for (const Unit& unit : file.units) {
            lines += unitLines(file, unit);
            ++count;
            lost += units::isLost(unit) ? 1 : 0;
        }
    }
    return text::printableText(path) + ": " + counted(count, "controlled unit") + ", " + std::to_string(lost) +
           " missing\n" + lines;
}

class TextForm final : public UnitsForm {
public:
    explicit TextForm(text::BufferedOutput& output) : output_(output) {}

    void write(const std::string& path, const units::UnitTree& tree) override {
        output_.put(modelLines(path, tree));
        output_.flush();
    }
    void writeFailure(const std::string& /*path*/, const std::string& /*reason*/) override {}
    void end(const UnitFindings& findings, const units::PathSymbols& /*symbols*/) override {
        for (const TextLines& lines : {mappingLines(findings.mapped), suggestionLines(findings.suggestions)}) {
            for (const std::string& line : lines) {
                output_.put(line + "\n");
            }
        }
        output_.flush();
    }

private:
    text::BufferedOutput& output_;
};

/// Writes the JSON form, as docs/units.md defines it.
class JsonForm final : public UnitsForm {
public:
    explicit JsonForm(text::BufferedOutput& output) : output_(output), json_(output) {
        json_.startObject();
        text("format", "petal-units");
        number("formatVersion", 1);
        startList("models");
    }

    void write(const std::string& path, const units::UnitTree& tree) override {
        json_.startObject();
        text("file", text::validText(path));
        startList("units");
        for (const units::ResolvedFile& file : tree.files) {
            for (const Unit& unit : file.units) {
                write(file, unit);
            }
        }
        json_.endList();
        json_.endObject();
    }
    void writeFailure(const std::string& path, const std::string& reason) override {
        json_.startObject();
        text("file", text::validText(path));
        text("error", text::validText(reason));
        json_.endObject();
    }
    void end(const UnitFindings& findings, const units::PathSymbols& symbols) override {
        json_.endList();
        startList("symbols");
        for (const auto& [lower, use] : findings.symbols) {
            write(use, symbols, std::ranges::find(findings.mapped, lower, [](const units::SymbolFolder& mapped) {
                                    return units::lowerCase(mapped.symbol);
                                }) != findings.mapped.end());
        }
        json_.endList();
        startList("suggestions");
        for (const units::SymbolFolder& suggestion : findings.suggestions) {
            json_.startObject();
            text("symbol", text::validText(suggestion.symbol));
            text("folder", text::validText(suggestion.folder.native()));
            number("found", suggestion.found);
            number("units", suggestion.units);
            json_.endObject();
        }
        json_.endList();
        json_.endObject();
        output_.put('\n');
        output_.flush();
    }

private:
    void write(const units::ResolvedFile& file, const Unit& unit) {
        const auto named = [&](const char* name, const std::string& bytes) {
            text(name, KelTextDecoder(units::encodingOf(file.contents.charSet)).toUtf8(bytes));
        };
        json_.startObject();
        named("kind", unit.reference.kind);
        named("name", unit.reference.name);
        named("fileName", unit.reference.fileName);
        text("namedIn", text::validText(file.path.native()));
        number("line", unit.reference.place.line);
        text("state", wordsOf(unit).json);
        optional("cause", causeWords.at(static_cast<std::size_t>(unit.fault)));
        optional("path", text::validText(unit.path.native()));
        optional("remark", text::validText(unit.remark));
        json_.endObject();
    }
    void write(const SymbolUse& use, const units::PathSymbols& symbols, bool isAutomatic) {
        json_.startObject();
        text("symbol", text::validText(use.symbol));
        number("units", use.units);
        number("missing", use.missing);
        if (const auto folder = symbols.find(use.symbol)) {
            text("folder", text::validText(folder->native()));
            text("from", isAutomatic ? "auto" : symbols.isMapped(use.symbol) ? "option" : "environment");
        }
        json_.endObject();
    }

    void startList(const char* name) {
        json_.key(name);
        json_.startList();
    }
    void text(const char* name, std::string_view value) {
        json_.key(name);
        json_.text(value);
    }
    void optional(const char* name, std::string_view value) {
        if (!value.empty()) {
            text(name, value);
        }
    }
    void number(const char* name, std::uint64_t value) {
        json_.key(name);
        json_.number(static_cast<std::int64_t>(value));
    }

    text::BufferedOutput& output_;
    text::IndentedJson json_;
};

} // namespace

std::unique_ptr<UnitsForm> UnitsForm::open(text::BufferedOutput& output, bool asJson) {
    if (asJson) {
        return std::make_unique<JsonForm>(output);
    }
    return std::make_unique<TextForm>(output);
}

} // namespace petal
