#include "petal/info/infoForms.h"
#include "petal/info/roseReleases.h"

#include <functional>

namespace petal {

namespace {

using text::IndentedJson;

/// Writes the members of an object, without those that say nothing.
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
        json.text(kind); // not a key: a kind may hold what JSON escapes
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
