#include "petal/output/ModelOutput.h"

#include "petal/output/Descriptor.h"
#include "petal/output/FileUses.h"
#include "petal/output/TemporaryFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace petal {

using std::filesystem::path;

namespace {

/// Writes to a temporary file in the target's folder.
class ReplacingOutput final : public ModelOutput {
public:
    explicit ReplacingOutput(const path& target) : file_(target) {}

    void write(std::string_view bytes) override { file_.write(bytes); }
    void commit() override {
        file_.sync();
        file_.takePlace();
        syncFolder(file_.getFolder());
    }
    [[nodiscard]] bool isTerminal() const override { return false; }

private:
    TemporaryFile file_;
};

/// Writes to an open file descriptor, which it owns.
class OwnDescriptorOutput final : public ModelOutput {
public:
    explicit OwnDescriptorOutput(int descriptor) : descriptor_(descriptor) {}
    ~OwnDescriptorOutput() override {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }

    void write(std::string_view bytes) override { writeFully(descriptor_, bytes); }
    void commit() override {
        if (::close(std::exchange(descriptor_, -1)) != 0) {
            throwErrno();
        }
    }
    [[nodiscard]] bool isTerminal() const override { return ::isatty(descriptor_) == 1; }

private:
    int descriptor_; // -1 once closed
};

} // namespace

std::optional<path> fileToReplace(const std::string& given) {
    struct stat existing {};
    const bool exists = ::stat(given.c_str(), &existing) == 0;
    if (exists && !S_ISREG(existing.st_mode)) {
        return std::nullopt;
    }
    if (exists && ::access(given.c_str(), W_OK) != 0) {
        throwErrno();
    }
    return followLinks(given);
}

bool leadsToTerminal(const std::optional<std::string>& given) {
    if (given && *given != "-" && namedDescriptor(*given) < 0) {
        struct stat existing {};
        if (::stat(given->c_str(), &existing) != 0 || !S_ISCHR(existing.st_mode)) {
            return false;
        }
    }
    try {
        return ModelOutput::open(given)->isTerminal();
    } catch (const std::system_error&) {
        return false;
    }
}

std::unique_ptr<ModelOutput> ModelOutput::open(const std::optional<std::string>& given, int descriptor) {
    if (descriptor < 0) {
        descriptor = !given || *given == "-" ? STDOUT_FILENO : namedDescriptor(*given);
    }
    if (descriptor >= 0) {
        return std::make_unique<OwnDescriptorOutput>(duplicate(descriptor));
    }
    if (auto file = fileToReplace(*given)) {
        removeAbandoned(file->parent_path(), fewNames);
        return std::make_unique<ReplacingOutput>(*file);
    }
    const int opened = ::open(given->c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    if (opened < 0) {
        throwErrno();
    }
    return std::make_unique<OwnDescriptorOutput>(opened);
}

} // namespace petal
