// The reader of the notation keeps its contract on any bytes, and what petal tells of a file drives no terminal and is
// JSON.

#include "notationFault.h"
#include "petal/info/gatherFileInfo.h"
#include "petal/info/infoForms.h"
#include "require.h"
#include "support/Written.h"
#include "text/Output.h"
#include "textFault.h"

namespace {

std::string jsonOf(const petal::FileInfo& info) {
    MemoryOutput output;
    text::BufferedOutput buffered(output);
    text::IndentedJson json(buffered);
    petal::writeInfoJson("model.mdl", info, json);
    buffered.flush();
    return output.text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    fuzz::requireNone(fuzz::notationFault(text));

    notation::MemorySource source(text);
    const petal::FileInfo info = petal::gatherFileInfo(source);
    fuzz::requireNone(fuzz::textFault(petal::infoText("model.mdl", info)));
    fuzz::requireNone(fuzz::jsonFault(jsonOf(info)));
    return 0;
}
