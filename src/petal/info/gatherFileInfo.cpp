#include "petal/info/gatherFileInfo.h"

#include "host/encoding/charSetEncoding.h"
#include "notation/Reader.h"
#include "notation/unescaped.h"
#include "petal/LogText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace petal {

namespace {

using notation::Construct;
using notation::Event;
using notation::EventKind;

constexpr std::string_view headerKind = "Petal";
constexpr std::string_view diagramSuffix = "Diagram"; // ClassDiagram, State_Diagram ...
constexpr const char* defaultEncoding = "windows-1252";

std::optional<std::int64_t> numberOf(const Event& event) {
    std::int64_t number = 0;
    const char* end = event.text.data() + event.text.size();
    const auto [stop, error] = std::from_chars(event.text.data(), end, number);
    const bool isNumber = event.kind == EventKind::integer && error == std::errc() && stop == end;
    return isNumber ? std::optional(number) : std::nullopt;
}

/// An object that is being read, with what makes it a controlled unit.
struct OpenObject {
    std::string kind;
    std::string name;
    std::string file;
    bool isUnit = false;
    bool isLoaded = false;
    notation::Place place;
};

struct Property {
    std::string_view key;
    bool inHeader;
    void (*take)(FileInfo& info, OpenObject& object, const Event& event);
    std::string& (*text)(FileInfo& info, OpenObject& object); // null for what is no text
};

constexpr auto properties = std::to_array<Property>({
    {"version", true, [](FileInfo& info, OpenObject&, const Event& event) { info.version = numberOf(event); }, nullptr},
    {"charSet", true, [](FileInfo& info, OpenObject&, const Event& event) { info.charSet = numberOf(event); }, nullptr},
    {"_written", true, nullptr, [](FileInfo& info, OpenObject&) -> std::string& { return info.written; }},
    {"is_unit", false, [](FileInfo&, OpenObject& object, const Event& event) { object.isUnit = event.text == "TRUE"; },
     nullptr},
    {"is_loaded", false,
     [](FileInfo&, OpenObject& object, const Event& event) { object.isLoaded = event.text == "TRUE"; }, nullptr},
    {"file_name", false, nullptr, [](FileInfo&, OpenObject& object) -> std::string& { return object.file; }},
});

class Gatherer {
public:
    /// False when there is no point in reading on.
    bool take(const Event& event);
    FileInfo finish();

private:
    void startObject(const Event& event);
    void endObject();
    void takeProperty(const Event& event);
    static void addText(const Event& event, std::string& text);
    void countKind(const std::string& kind);
    OpenObject& current() { return open_[depth_ - 1]; }

    FileInfo info_;
    std::vector<OpenObject> open_; // those in front of `depth_`; the others keep their memory for the next
    std::size_t depth_ = 0;
    std::string* text_ = nullptr; // what a further piece of the last value belongs to
};

bool Gatherer::take(const Event& event) {
    if (event.continues) {
        if (text_ != nullptr) {
            addText(event, *text_);
        }
        return true;
    }
    if (event.kind == EventKind::damage) {
        if (++info_.damageCount <= mostDamages) {
            info_.damages.push_back(*event.damage);
        }
        return true;
    }
    text_ = nullptr;
    if (event.isProperty()) {
        ++info_.propertyCount;
        takeProperty(event);
    }
    if (event.kind == EventKind::start) {
        if (event.construct == Construct::object) {
            startObject(event);
        }
        return info_.isModel;
    }
    if (event.kind == EventKind::end && event.construct == Construct::object) {
        endObject();
    }
    return true;
}

void Gatherer::startObject(const Event& event) {
    if (info_.objectCount == 0) {
        info_.isModel = event.depth == 0 && event.text == headerKind;
    }
    if (open_.size() == depth_) {
        open_.emplace_back();
    }
    OpenObject& object = open_[depth_++];
    object.kind = event.text;
    object.name.clear();
    if (!event.names.empty()) {
        const notation::Name& name = event.names.front();
        object.name = name.hasEscapes ? notation::unescaped(name.text) : std::string(name.text);
    }
    object.file.clear();
    object.isUnit = false;
    object.isLoaded = false;
    object.place = event.place;
    if (!event.isImplied) {
        ++info_.objectCount;
        countKind(object.kind);
        if (event.text.ends_with(diagramSuffix)) {
            info_.diagrams.push_back({object.kind, object.name});
        }
    }
}

void Gatherer::countKind(const std::string& kind) {
    auto found = info_.objects.find(kind);
    if (found == info_.objects.end()) {
        found = info_.objects.emplace(info_.objects.size() < mostKinds ? kind : otherKinds, 0).first;
    }
    ++found->second;
}

void Gatherer::endObject() {
    const OpenObject& object = current();
    --depth_;
    if (object.isUnit && depth_ > 0) { // the outermost is the file itself
        info_.units.push_back(
            {object.kind, object.name, notation::unescaped(object.file), object.isLoaded, object.place});
    }
}

void Gatherer::takeProperty(const Event& event) {
    const bool inHeader = depth_ == 1 && info_.objectCount == 1;
    const auto* found = std::ranges::find(properties, event.key, &Property::key);
    if (found == properties.end() || found->inHeader != inHeader) {
        return;
    }
    if (found->take != nullptr) {
        found->take(info_, current(), event);
    } else if (event.kind == EventKind::text || event.kind == EventKind::line) {
        text_ = &found->text(info_, current());
        text_->clear();
        addText(event, *text_);
    }
}

void Gatherer::addText(const Event& event, std::string& text) {
    text += event.continues && event.startsLine ? "\n" : "";
    text += event.text;
}

FileInfo Gatherer::finish() {
    const char* encoding = info_.charSet && std::in_range<int>(*info_.charSet)
                               ? charSetEncoding(static_cast<int>(*info_.charSet))
                               : nullptr;
    info_.encoding = encoding;
    LogText utf8(encoding != nullptr ? encoding : defaultEncoding);
    const auto convert = [&](std::string& text) { text = utf8.toUtf8(KelString(std::string_view(text))).view(); };
    convert(info_.written = notation::unescaped(info_.written));
    std::map<std::string, std::uint64_t, std::less<>> objects;
    for (const auto& [kind, count] : info_.objects) {
        std::string converted = kind;
        convert(converted);
        objects[converted] += count;
    }
    info_.objects = std::move(objects);
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
