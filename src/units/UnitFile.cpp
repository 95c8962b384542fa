#include "units/UnitFile.h"

#include "notation/Header.h"
#include "notation/Reader.h"
#include "notation/unescaped.h"
#include "units/OpenFile.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace units {

namespace {

using notation::Construct;
using notation::Event;
using notation::EventKind;

constexpr std::string_view designKind = "Design";
constexpr std::string_view rootKey = "root_category";
constexpr std::string_view logicalViewHead = "(object Class_Category \"Logical View\""; // the import begins with it

/// An object that is being read.
struct OpenObject {
    UnitReference reference;
    bool isUnit = false;
    bool isLoaded = true; // an object without the property is complete
};

class Gatherer {
public:
    explicit Gatherer(Extent extent) : extent_(extent) {}

    /// Returns false when the rest of the file is not needed.
    bool take(const Event& event);
    [[nodiscard]] UnitFile& file() { return file_; }
    [[nodiscard]] const notation::Header& header() const { return header_.header(); }

private:
    bool startObject(const Event& event);
    void takePackage(const Event& event);
    void endObject(const Event& event);
    void takeProperty(const Event& event);

    Extent extent_;
    UnitFile file_;
    notation::HeaderGatherer header_;
    std::size_t topObjects_ = 0;
    std::vector<OpenObject> open_; // the first `depth_`; the others keep their memory for reuse
    std::size_t depth_ = 0;
    bool inFileName_ = false; // further pieces belong to a file's name
};

bool Gatherer::take(const Event& event) {
    if (!header_.take(event)) {
        return false;
    }
    if (event.kind == EventKind::damage) {
        return true;
    }
    if (event.continues) {
        if (inFileName_) {
            open_[depth_ - 1].reference.fileName += event.text;
        }
        return true;
    }
    inFileName_ = false;
    if (event.isProperty() && depth_ > 0) {
        takeProperty(event);
    }
    if (event.kind == EventKind::start && event.construct == Construct::object) {
        return startObject(event);
    }
    if (event.kind == EventKind::end && event.construct == Construct::object) {
        endObject(event);
    }
    return true;
}

bool Gatherer::startObject(const Event& event) {
    if (open_.size() == depth_) {
        open_.emplace_back();
    }
    OpenObject& object = open_[depth_++];
    object.isUnit = false;
    object.isLoaded = true;
    object.reference.kind = event.text;
    object.reference.name = event.names.empty() ? std::string() : notation::unescaped(event.names.front().text);
    object.reference.fileName.clear();
    object.reference.place = event.place;
    if (event.depth == 0) {
        ++topObjects_;
        if (topObjects_ == 2) {
            file_.kind = event.text;
            file_.name = object.reference.name;
            file_.content.begin = event.place.offset;
        }
    }
    if (event.text == packageKind && !event.names.empty() && event.names.front().hasEscapes) {
        takePackage(event);
    }
    return extent_ == Extent::whole || topObjects_ < 2;
}

void Gatherer::takePackage(const Event& event) {
    const notation::Name& name = event.names.front();
    const bool isLogicalView = name.text == logicalView;
    const bool isRoot = event.key == rootKey && event.depth == 1 && topObjects_ == 2;
    const auto head = [&] {
        return PackageHead{std::string(name.text), {name.offset, name.offset + name.length}, event.place};
    };
    if (event.depth == 0 && topObjects_ == 2) {
        file_.head = head();
    } else if (file_.kind == designKind && (file_.root ? isRoot && isLogicalView : isRoot || isLogicalView)) {
        file_.root = head();
    }
}

void Gatherer::endObject(const Event& event) {
    OpenObject& object = open_[--depth_];
    if (depth_ == 0 && topObjects_ == 2 && file_.content.end == 0) {
        file_.content.end = event.end;
    }
    if (object.isUnit && !object.isLoaded && depth_ > 0) {
        object.reference.range = {object.reference.place.offset, event.end};
        object.reference.isClosed = !event.isImplied;
        file_.references.push_back(object.reference);
    }
}

void Gatherer::takeProperty(const Event& event) {
    OpenObject& object = open_[depth_ - 1];
    if (event.key == "is_unit") {
        object.isUnit = event.text == "TRUE";
    } else if (event.key == "is_loaded") {
        object.isLoaded = event.kind != EventKind::flag || event.text != "FALSE";
    } else if (event.key == "file_name" && event.kind == EventKind::text) {
        object.reference.fileName = event.text;
        inFileName_ = true;
    }
}

/// As `text.find`, but faster.
std::size_t find(std::string_view text, std::string_view wanted) {
    const void* found = ::memmem(text.data(), text.size(), wanted.data(), wanted.size());
    return found == nullptr ? std::string_view::npos
                            : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

bool startsAfterBlanks(std::string_view text, std::string_view wanted) {
    const std::size_t begin = text.find_first_not_of(" \t\r\n\v\f");
    return begin != std::string_view::npos && text.substr(begin).starts_with(wanted);
}

bool says(std::string_view text, std::string_view key, std::string_view value) {
    for (std::size_t at = 0; (at = find(text, key)) != std::string_view::npos;) {
        text.remove_prefix(at + key.size());
        if (startsAfterBlanks(text, value)) {
            return true;
        }
    }
    return false;
}

} // namespace

bool isLonePackage(const UnitFile& model) {
    return model.isModel && model.kind == packageKind && model.name != logicalView;
}

UnitFile readUnitFile(const std::filesystem::path& path, Extent extent) {
    OpenFile file(path);
    notation::Reader reader(file);
    Gatherer gatherer(extent);
    while (reader.next() && gatherer.take(reader.event())) {
    }
    UnitFile& gathered = gatherer.file();
    gathered.isModel = gatherer.header().isModel;
    gathered.charSet = gatherer.header().charSet;
    gathered.isHeaderClosed = gatherer.header().isClosed;
    for (UnitReference& reference : gathered.references) {
        reference.fileName = notation::unescaped(reference.fileName);
    }
    std::ranges::sort(gathered.references, {}, [](const UnitReference& reference) { return reference.range.begin; });
    std::erase_if(gathered.references, [end = std::uint64_t{0}](const UnitReference& reference) mutable {
        const bool isWithin = reference.range.begin < end;
        end = std::max(end, reference.range.end);
        return isWithin;
    });
    return std::move(gathered);
}

bool mayNeedAssembly(const std::filesystem::path& path) {
    constexpr std::size_t longest = 256; // length of a key, blanks and the text after them
    constexpr std::size_t windowSize = std::size_t{256} * 1024;
    OpenFile file(path);
    const auto window = std::make_unique_for_overwrite<char[]>(windowSize); // a small file never touches most of it
    bool knowsRoot = false;
    for (std::size_t kept = 0;;) {
        const std::size_t count = file.read(window.get() + kept, windowSize - kept);
        const std::string_view text(window.get(), kept + count);
        if (says(text, "is_loaded", "FALSE")) {
            return true;
        }
        const std::size_t root = knowsRoot ? std::string_view::npos : find(text, rootKey);
        if (root != std::string_view::npos && (count == 0 || text.size() - root >= longest)) {
            if (!startsAfterBlanks(text.substr(root + rootKey.size()), logicalViewHead)) {
                return true;
            }
            knowsRoot = true;
        }
        if (count == 0) {
            return false;
        }
        kept = std::min(longest, text.size());
        std::memmove(window.get(), text.data() + text.size() - kept, kept);
    }
}

} // namespace units
