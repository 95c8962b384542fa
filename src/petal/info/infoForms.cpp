#include "petal/info/infoForms.h"

#include "text/escape.h"

#include <algorithm>
#include <array>
#include <functional>

namespace petal {

namespace {

struct Release {
    std::int64_t version;
    const char* name;
};

constexpr auto releases = std::to_array<Release>({
    {37, "3.0"},
    {40, "4.0"},
    {42, "98/98i"},
    {43, "98i SP1"},
    {44, "2000e"},
    {45, "2001a/2002"},
    {46, "2002.05.20"},
    {47, "2003.06.00"},
    {48, "2003.06.01"},
    {50, "2003.06.12 and later"},
});

} // namespace

const char* roseRelease(std::int64_t version) {
    const auto* found = std::ranges::find(releases, version, &Release::version);
    return found != releases.end() ? found->name : nullptr;
}

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

namespace {

using text::IndentedJson;

/// Writes the members of an object, except empty ones.
class Members {
public:
    explicit Members(IndentedJson& json) : json_(json) {}

    void text(const char* name, std::string_view value) {
        if (!value.empty()) {
            json_.key(name);
            json_.text(value);
        }
    }
    void number(const char* name, std::uint64_t value) {
        json_.key(name);
        json_.number(static_cast<std::int64_t>(value));
    }
    void optional(const char* name, const std::optional<std::int64_t>& value) {
        if (value) {
            json_.key(name);
            json_.number(*value);
        }
    }
    void flag(const char* name, bool value) {
        if (value) {
            json_.key(name);
            json_.trueFlag();
        }
    }
    void place(const notation::Place& place) {
        number("line", place.line);
        number("column", place.column);
        number("offset", place.offset);
    }
    template <class Row, class Write>
    void list(const char* name, const std::vector<Row>& rows, Write write) {
        if (rows.empty()) {
            return;
        }
        json_.key(name);
        json_.startList();
        for (const Row& row : rows) {
            json_.startObject();
            write(row);
            json_.endObject();
        }
        json_.endList();
    }

private:
    IndentedJson& json_;
};

void writeObjects(const FileInfo& info, IndentedJson& json) {
    json.key("objectsByKind");
    json.startObject();
    for (const auto& [kind, count] : info.objects) {
        json.text(kind); // not `key`: a kind may contain characters that JSON escapes
        json.number(static_cast<std::int64_t>(count));
    }
    json.endObject();
}

} // namespace

void writeInfoJson(const std::string& path, const FileInfo& info, IndentedJson& json) {
    Members members(json);
    json.startObject();
    members.text("file", path);
    members.optional("version", info.version);
    const char* release = info.version ? roseRelease(*info.version) : nullptr;
    members.text("release", release != nullptr ? release : "");
    members.text("written", info.written);
    members.optional("charSet", info.charSet);
    members.text("encoding", info.encoding != nullptr ? info.encoding : "");
    members.number("objects", info.objectCount);
    writeObjects(info, json);
    members.number("properties", info.propertyCount);
    members.list("controlledUnits", info.units, [&](const ControlledUnit& unit) {
        members.text("kind", unit.kind);
        members.text("name", unit.name);
        members.text("file", unit.file);
        members.flag("loaded", unit.isLoaded);
        members.place(unit.place);
    });
    members.list("diagrams", info.diagrams, [&](const DiagramInfo& diagram) {
        members.text("kind", diagram.kind);
        members.text("name", diagram.name);
    });
    members.number("damages", info.damageCount);
    members.list("firstDamages", info.damages, [&](const notation::Damage& damage) {
        members.text("kind", notation::damageWord(damage.kind));
        members.text("text", notation::damageText(damage));
        members.place(damage.place);
    });
    json.endObject();
}

} // namespace petal
