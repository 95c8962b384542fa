#include "support/ImportedModel.h"

#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "host/log/KelException.h"
#include "host/options/KelOptionList.h"
#include "support/Written.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

/// A folder of this process's own that goes with it, though not with a fork that exits, as a death test's does.
class WorkFolder {
public:
    WorkFolder() { std::filesystem::create_directories(path); }
    ~WorkFolder() {
        if (::getpid() == owner) {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }
    }
    const pid_t owner = ::getpid();
    const std::filesystem::path path = std::filesystem::temp_directory_path() / ("petal-test-" + std::to_string(owner));
};

/// The text without the first line that holds `mark`.
std::string withoutLine(std::string text, std::string_view mark) {
    const std::size_t at = text.find(mark);
    if (at != std::string::npos) {
        const std::size_t begin = text.rfind('\n', at) + 1;
        text.erase(begin, text.find('\n', at) + 1 - begin);
    }
    return text;
}

} // namespace

void KeptLog::record(const KelLogEvent& event) {
    lines.push_back(std::string(event.getCode().view()) + " " + std::string(event.getText().view()));
}

int KeptLog::count(std::string_view code) const {
    return static_cast<int>(
        std::count_if(lines.begin(), lines.end(), [code](const std::string& line) { return line.starts_with(code); }));
}

ImportedModel::ImportedModel(const std::string& path, const Choices& choices) {
    auto& bridge = static_cast<KelModelBridgeImportDllInterface&>(*getKelIbmRationalRose40ImportInterface());
    KelOptionList options;
    bridge.getOptionList(options);
    options.setFreeValue("File", path.c_str());
    options.setFreeValue("Supported types", KelString(choices.types));
    options.setFreeValue("Encoding", KelString(choices.encoding));
    try {
        bridge.run("bridge-under-test", model, options, log);
    } catch (const KelException& exception) {
        failure = exception.what();
    }
}

ImportedModel ImportedModel::ofBytes(std::string_view bytes, const Choices& choices) {
    static const WorkFolder folder;
    const std::string path = folder.path / "model.mdl";
    std::filesystem::remove(path); // written over, it would be flushed to the disk each time
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return ImportedModel(path, choices);
}

ImportedModel ImportedModel::ofBody(std::string_view body, const Choices& choices) {
    return ofBytes(std::string(petalHeader) + std::string(body), choices);
}

ImportedModel ImportedModel::ofFile(const std::string& path, const Choices& choices) {
    return ImportedModel(path, choices);
}

std::string ImportedModel::json() const {
    return jsonOf(model);
}

std::string ImportedModel::tree() const {
    return withoutLine(writtenAs("tree", model), "  origin: ");
}

ImportedModel importLogicalView(std::string_view content, const ImportChoices& choices) {
    return ImportedModel::ofBody("(object Class_Category \"Logical View\"\n" + std::string(content), choices);
}

std::string jsonOf(const KelModel& model) {
    return withoutLine(writtenAs("json", model), "\"sourcePath\"");
}
