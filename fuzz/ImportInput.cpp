#include "ImportInput.h"

#include "MemoryFile.h"
#include "host/literals/HOCM.h"
#include "support/RepositoryInvariants.h"

#include <array>

namespace fuzz {

namespace {

constexpr std::array<std::string_view, 2> types{"C++", "Oracle 7.x & 8"};
constexpr auto encodings = std::to_array<std::string_view>(
    {"windows-1252", "UTF-8", "unknown", "windows-932", "UTF-16LE", "GB18030", "no such encoding", "ISO-2022-JP"});

constexpr unsigned typesBit = 1;
constexpr unsigned bareBit = 2;
constexpr unsigned encodingShift = 2;

bool isEmpty(const KelModel& model) {
    return model.types().isEmpty() && model.childPackages().isEmpty() && model.metadataOrigins().isEmpty();
}

} // namespace

ImportInput::ImportInput(const std::uint8_t* bytes, std::size_t size) {
    const unsigned choice = size > 0 ? bytes[0] : 0;
    choices_ = {.types = types[choice & typesBit], .encoding = encodings[(choice >> encodingShift) % encodings.size()]};
    if ((choice & bareBit) == 0) {
        file_ = petalHeader;
    }
    if (size > 0) {
        file_.append(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    }
}

ImportedModel ImportInput::import() const {
    static MemoryFile file;
    file.put(file_);
    return ImportedModel::ofFile(file.getPath(), choices_);
}

std::string endFault(const std::string& failure, KelModel& model) {
    if (failure.starts_with("[" + std::string(HOCM::BRIDGE_UNEXPECTED_ERROR.getFullCode().view()))) {
        return failure;
    }
    if (!failure.empty()) {
        return isEmpty(model) ? "" : "a failed import leaves something";
    }
    return brokenInvariant(model);
}

std::string emptyingFault(KelModel& model) {
    model.recursiveDelete();
    return isEmpty(model) ? brokenInvariant(model) : "an emptied model still holds something";
}

} // namespace fuzz
