#include "petal/info/gatherFileInfo.h"

#include "host/encoding/KelTextDecoder.h"
#include "host/encoding/charSetEncoding.h"
#include "host/text/KelTextHash.h"
#include "notation/Header.h"
#include "notation/Reader.h"
#include "notation/unescaped.h"
#include "units/localText.h"

#include <algorithm>
#include <array>
#include <functional>
#include <tsl/robin_map.h>
#include <utility>

namespace petal {

namespace {

using namespace std::string_view_literals;

struct Format {
    std::string_view start;
    const char* advice;
};

constexpr const char* utf16Advice = "It is in UTF-16. Convert it to the encoding that its charSet means, "
                                    "with iconv for example.";
constexpr const char* archiveAdvice = "It is a compressed archive. Unpack it and name the model file in it.";

constexpr auto formats = std::to_array<Format>({
    {"\xFF\xFE"sv, utf16Advice},
    {"\xFE\xFF"sv, utf16Advice},
    {"\0("sv, utf16Advice},
    {"(\0"sv, utf16Advice},
    {"PK\3\4"sv, archiveAdvice},
    {"\x1F\x8B"sv, archiveAdvice},
    {"7z\xBC\xAF"sv, archiveAdvice},
    {"<"sv, "It is XML or HTML. Save the model with its tool, or name the file that the tool saved."},
});

} // namespace

const char* foreignFormatAdvice(std::string_view head) {
    if (head.empty()) {
        return "It is empty. Was it saved or copied completely?";
    }
    const auto* found =
        std::ranges::find_if(formats, [head](const Format& format) { return head.starts_with(format.start); });
    return found != formats.end()
               ? found->advice
               : "A model file begins with \"(object Petal\". Check that its tool saved this file as a "
                 "model.";
}

namespace {

using notation::Construct;
using notation::Event;
using notation::EventKind;

constexpr std::string_view diagramSuffix = "Diagram"; // ClassDiagram, State_Diagram ...

/// An object that is being read, with the properties of a controlled unit.
struct OpenObject {
    std::string kind;
    std::string name; // with escapes if `hasEscapes`
    bool hasEscapes = false;
    std::string file;
    bool isUnit = false;
    bool isLoaded = false;
    notation::Place place;
};

class Gatherer {
public:
    /// Returns false when the rest of the file is not needed.
    bool take(const Event& event);
    FileInfo finish();

private:
    void startObject(const Event& event);
    void endObject();
    void takeProperty(const Event& event);
    void countKind(std::string_view kind);
    static std::string nameOf(const OpenObject& object);
    OpenObject& current() { return open_[depth_ - 1]; }

    FileInfo info_;
    tsl::robin_map<std::string, std::uint64_t, KelTextHash, std::equal_to<>> kinds_; // as in the file
    notation::HeaderGatherer header_;
    std::vector<OpenObject> open_; // the first `depth_`; the others keep their memory for reuse
    std::size_t depth_ = 0;
    bool inFileName_ = false; // further pieces belong to a file's name
};

bool Gatherer::take(const Event& event) {
    if (!header_.take(event)) {
        return false;
    }
    if (event.continues) {
        if (inFileName_) {
            current().file += event.startsLine ? "\n" : "";
            current().file += event.text;
        }
        return true;
    }
    if (event.kind == EventKind::damage) {
        if (++info_.damageCount <= mostDamages) {
            info_.damages.push_back(*event.damage);
        }
        return true;
    }
    inFileName_ = false;
    if (event.isProperty()) {
        ++info_.propertyCount;
        if (depth_ > 0) {
            takeProperty(event);
        }
    }
    if (event.kind == EventKind::start && event.construct == Construct::object) {
        startObject(event);
    } else if (event.kind == EventKind::end && event.construct == Construct::object) {
        endObject();
    }
    return true;
}

void Gatherer::startObject(const Event& event) {
    if (open_.size() == depth_) {
        open_.emplace_back();
    }
    OpenObject& object = open_[depth_++];
    object.kind = event.text;
    object.name.clear();
    if (!event.names.empty()) {
        object.name = event.names.front().text;
        object.hasEscapes = event.names.front().hasEscapes;
    }
    object.file.clear();
    object.isUnit = false;
    object.isLoaded = false;
    object.place = event.place;
    if (!event.isImplied) {
        ++info_.objectCount;
        countKind(event.text);
        if (event.text.ends_with(diagramSuffix)) {
            info_.diagrams.push_back({object.kind, nameOf(object)});
        }
    }
}

void Gatherer::countKind(std::string_view kind) {
    auto found = kinds_.find(kind);
    if (found == kinds_.end()) {
        found = kinds_.emplace(kinds_.size() < mostKinds ? kind : otherKinds, 0).first;
    }
    ++found.value();
}

std::string Gatherer::nameOf(const OpenObject& object) {
    return object.hasEscapes ? notation::unescaped(object.name) : object.name;
}

void Gatherer::endObject() {
    const OpenObject& object = current();
    --depth_;
    if (object.isUnit && depth_ > 0) { // the outermost is the file itself
        info_.units.push_back(
            {object.kind, nameOf(object), notation::unescaped(object.file), object.isLoaded, object.place});
    }
}

void Gatherer::takeProperty(const Event& event) {
    OpenObject& object = current();
    if (event.key == "is_unit") {
        object.isUnit = event.text == "TRUE";
    } else if (event.key == "is_loaded") {
        object.isLoaded = event.text == "TRUE";
    } else if (event.key == "file_name" && (event.kind == EventKind::text || event.kind == EventKind::line)) {
        object.file = event.text;
        inFileName_ = true;
    }
}

FileInfo Gatherer::finish() {
    const notation::Header& header = header_.header();
    info_.isModel = header.isModel;
    info_.version = header.version;
    info_.charSet = header.charSet;
    info_.encoding = charSetEncoding(header.charSet);
    KelTextDecoder decoder(units::encodingOf(header.charSet));
    const auto convert = [&](std::string& text) { text = decoder.toUtf8(text); };
    convert(info_.written = notation::unescaped(header.written));
    for (const auto& [kind, count] : kinds_) {
        info_.objects[decoder.toUtf8(kind)] += count;
    }
    for (ControlledUnit& unit : info_.units) {
        convert(unit.kind);
        convert(unit.name);
        convert(unit.file);
    }
    for (DiagramInfo& diagram : info_.diagrams) {
        convert(diagram.kind);
        convert(diagram.name);
    }
    std::ranges::sort(info_.units, {}, [](const ControlledUnit& unit) { return unit.place.offset; });
    return std::move(info_);
}

} // namespace

FileInfo gatherFileInfo(notation::ByteSource& source) {
    notation::Reader reader(source);
    Gatherer gatherer;
    while (reader.next() && gatherer.take(reader.event())) {
    }
    return gatherer.finish();
}

} // namespace petal
