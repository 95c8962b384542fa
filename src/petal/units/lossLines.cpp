#include "petal/units/lossLines.h"

#include "text/escape.h"

#include <algorithm>
#include <array>

namespace petal {

namespace {

constexpr std::size_t mostCauses = 20; // with a line each

/// The texts of a cause, in the order of `UnitFault`.
struct CauseText {
    const char* before;  // the subject
    const char* after;   // it
    const char* without; // the whole text if the cause has no subject
    bool hasExample;     // the subject does not say where to search
};
constexpr std::array causeTexts{
    CauseText{"", "", "not listed", false},
    CauseText{"", "", "no file is named", false},
    CauseText{"", " is not set", "", false},
    CauseText{"not found under ", "", "not found beside the file that names it", true},
    CauseText{"cannot be read (", ")", "cannot be read", true},
    CauseText{"", "", "not a model file", true},
    CauseText{"", "", "another kind of object", true},
    CauseText{"", "", "contains itself", true},
};

std::string causeLine(const units::LossCause& cause) {
    const CauseText& text = causeTexts.at(static_cast<std::size_t>(cause.fault));
    std::string line = cause.subject.empty() ? text.without : text.before + cause.subject + text.after;
    line += ": " + counted(cause.units, "unit") + " in " + counted(cause.models, "model");
    return text::printableText(text.hasExample ? line + ", such as " + cause.example : line);
}

/// `text`, quoted for a shell where necessary.
std::string shellWord(const std::string& text) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./=:@%+,-";
    const bool isPlain = std::ranges::all_of(text, [&](char byte) {
        return static_cast<unsigned char>(byte) >= 0x80 || plain.find(byte) != std::string_view::npos;
    });
    if (isPlain) {
        return text;
    }
    std::string word = "'";
    for (const char byte : text) {
        word += byte == '\'' ? "'\\''" : std::string(1, byte);
    }
    return word + "'";
}

TextLines linesOf(const std::vector<units::SymbolFolder>& folders, const char* verb) {
    TextLines lines;
    for (const units::SymbolFolder& each : folders) {
        lines.push_back(text::printableText("--path-map " + shellWord(each.symbol + "=" + each.folder.string()) + " " +
                                            verb + " " + std::to_string(each.found) + " of " +
                                            std::to_string(each.units)));
    }
    return lines;
}

} // namespace

std::string counted(std::uint64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

TextLines lossLines(const units::LostUnits& lost) {
    TextLines lines;
    const std::vector<units::LossCause> causes = lost.causes();
    for (const units::LossCause& cause : causes) {
        if (lines.size() == mostCauses) {
            lines.push_back("... and " + counted(causes.size() - mostCauses, "more cause"));
            break;
        }
        lines.push_back(causeLine(cause));
    }
    return lines;
}

TextLines suggestionLines(const std::vector<units::SymbolFolder>& folders) {
    return linesOf(folders, "would find");
}

TextLines mappingLines(const std::vector<units::SymbolFolder>& folders) {
    return linesOf(folders, "finds");
}

std::string asNotes(const TextLines& lines) {
    std::string notes;
    for (const std::string& line : lines) {
        notes += "petal: " + line + "\n";
    }
    return notes;
}

} // namespace petal
