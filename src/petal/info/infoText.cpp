#include "petal/info/infoForms.h"
#include "petal/info/roseReleases.h"
#include "text/escape.h"

#include <algorithm>

namespace petal {

namespace {

constexpr std::size_t damagesShown = 20;

std::string line(const std::string& label, const std::string& text) {
    return "  " + label + ": " + text + "\n";
}

std::string numberLine(const std::string& label, const std::optional<std::int64_t>& number, const char* meaning) {
    return number ? line(label, std::to_string(*number) + " (" + (meaning != nullptr ? meaning : "unknown") + ")")
                  : line(label, "none");
}

std::string versionMeaning(const FileInfo& info) {
    const char* release = info.version ? roseRelease(*info.version) : nullptr;
    return release != nullptr ? std::string("Rose ") + release : "unknown release";
}

std::string named(const std::string& kind, const std::string& name) {
    return text::printableText(kind) + (name.empty() ? "" : " " + text::printableText(name));
}

std::string objectLines(const FileInfo& info) {
    std::string lines = line("objects", std::to_string(info.objectCount));
    for (const auto& [kind, count] : info.objects) {
        lines += "    " + std::to_string(count) + " " + (kind.empty() ? "(no kind)" : text::printableText(kind)) + "\n";
    }
    return lines;
}

std::string unitLines(const FileInfo& info) {
    std::string lines = line("controlled units", std::to_string(info.units.size()));
    for (const ControlledUnit& unit : info.units) {
        const std::string file = unit.file.empty() ? "no file named" : text::printableText(unit.file);
        lines += "    " + named(unit.kind, unit.name) + " (line " + std::to_string(unit.place.line) + ", " +
                 (unit.isLoaded ? "loaded" : "not loaded") + "): " + file + "\n";
    }
    return lines;
}

std::string diagramLines(const FileInfo& info) {
    std::string lines = line("diagrams", std::to_string(info.diagrams.size()));
    for (const DiagramInfo& diagram : info.diagrams) {
        lines += "    " + named(diagram.kind, diagram.name) + "\n";
    }
    return lines;
}

std::string damageLines(const FileInfo& info) {
    std::string lines = line("damages", std::to_string(info.damageCount));
    const std::size_t shown = std::min(info.damages.size(), damagesShown);
    for (std::size_t index = 0; index < shown; ++index) {
        lines += "    " + notation::damageLine(info.damages[index]) + "\n";
    }
    return lines + (info.damageCount > shown ? "    ...\n" : "");
}

} // namespace

std::string infoText(const std::string& path, const FileInfo& info) {
    return text::printableText(path) + "\n" + numberLine("version", info.version, versionMeaning(info).c_str()) +
           line("written by", info.written.empty() ? "unknown" : text::printableText(info.written)) +
           numberLine("charSet", info.charSet, info.encoding) + objectLines(info) +
           line("properties", std::to_string(info.propertyCount)) + unitLines(info) + diagramLines(info) +
           damageLines(info);
}

} // namespace petal
