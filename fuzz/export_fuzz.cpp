// What exporters write of an imported model is what they promise, and the same whatever was imported before.

#include "ImportInput.h"
#include "export/ElementIds.h"
#include "export/modelWalk.h"
#include "export/words.h"
#include "require.h"
#include "support/Written.h"
#include "text/utf8.h"
#include "textFault.h"

#include <map>

namespace {

using Fault = std::string (*)(std::string_view text);

struct Promise {
    std::string_view format;
    Fault fault; // what is wrong with what was written
};
constexpr Promise promises[] = {{"json", fuzz::jsonFault}, {"tree", fuzz::textFault}};

/// Everything that the exporters write of the model.
std::string exports(const KelModel& model) {
    std::string all;
    for (const exporter::Exporter& exporter : exporter::exporters()) {
        if (exporter.shape == exporter::Shape::nothing) {
            continue;
        }
        const std::string text = writtenAs(exporter.format, model);
        for (const Promise& promise : promises) {
            if (promise.format == exporter.format) {
                fuzz::requireNone(promise.fault(text));
            }
        }
        all += text;
    }
    return all;
}

/// Every element has an id that no other has, and that can stand anywhere.
struct IdCheck final : exporter::ModelVisitor {
    explicit IdCheck(const KelModel& model) : ids(model, nullptr) {
        exporter::walkModel(model, exporter::documentParts, *this);
    }
    void enter(const KelObject& element) override {
        const std::string id = ids.idOf(element);
        fuzz::require(exporter::kindWord(element.elementType) != nullptr, "an element without a kind");
        fuzz::require(id.size() == 17 && id.find_first_not_of("n0123456789abcdef") == std::string::npos, "an odd id");
        fuzz::require(owners.try_emplace(id, &element).first->second == &element, "two elements of one id");
        fuzz::require(text::isValidUtf8(exporter::qualifiedName(element)), "a name that is no UTF-8");
    }

    exporter::ElementIds ids;
    std::map<std::string, const KelObject*> owners;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const fuzz::ImportInput input(bytes, size);
    const ImportedModel imported = input.import();
    const std::string first = exports(imported.model);
    IdCheck check(imported.model);
    fuzz::require(exports(input.import().model) == first, "a second import of the same file gives another model");
    return 0;
}
