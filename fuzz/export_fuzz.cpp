// What exporters write of an imported model is what they promise, and the same whatever was imported before.

#include "ImportInput.h"
#include "export/exporters.h"
#include "require.h"
#include "text/MemoryOutput.h"
#include "textFault.h"

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
        if (exporter.write == nullptr) {
            continue;
        }
        MemoryOutput output;
        exporter.write(model, output);
        for (const Promise& promise : promises) {
            if (promise.format == exporter.format) {
                fuzz::requireNone(promise.fault(output.text));
            }
        }
        all += output.text;
    }
    return all;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const fuzz::ImportInput input(bytes, size);
    const std::string first = exports(input.import().model);
    fuzz::require(exports(input.import().model) == first, "a second import of the same file gives another model");
    return 0;
}
