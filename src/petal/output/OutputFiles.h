#pragma once

#include "export/OutputFolder.h"
#include "petal/output/FileSystems.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/TemporaryFile.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace petal {

/// The files of one export, which are put in place together. Owns them; without `commit` they leave no trace, even when
/// a signal ends the process. Each file uses a descriptor until `commit`, or until `close`. Several files are brought
/// to the disk together, by `FileSystems`.
class OutputFiles final : public exporter::OutputFolder {
public:
    /// A folder of one: the output that `ModelOutput::open` opens. Throws as it does.
    OutputFiles(const std::optional<std::string>& path, int descriptor);
    /// Regular files below `folder`. It is created with the first of them if it does not exist.
    explicit OutputFiles(std::string folder) : folder_(std::move(folder)) {}

    [[nodiscard]] text::Output& open(std::string_view name) override;
    /// The file that `addBeside` has opened.
    [[nodiscard]] text::Output& openBeside() override { return *beside_; }
    /// Opens the further file as `ModelOutput::open` does. Called once. Throws as it does.
    void addBeside(const std::string& path, int descriptor);

    /// Ends the file that was opened last. Its descriptor is closed now, unless it replaces another file, whose
    /// permissions it takes.
    void close();
    [[nodiscard]] std::size_t openCount() const { return openCount_; }

    /// Replaces all files or none. After it, further files may be opened below a folder, for another call. Throws
    /// `std::system_error`: regular files are then as they were, but folders that were created stay. Exceptions: if
    /// only bringing a name to the disk failed, all files are replaced; on a file system without hard links a file
    /// replaced before the failure stays so. Signals that end a program are delayed while the names change.
    void commit();

private:
    struct File final : text::Output {
        File(std::string target, TemporaryFile::Target kind)
            : temporary(std::move(target), TemporaryFile::Signal::removes, kind) {}
        void write(std::string_view bytes) override { temporary.write(bytes); }
        TemporaryFile temporary;
    };
    /// Makes the folder if it does not exist. Whether this object has made it, so that only its files are there.
    bool makeFolder(std::string_view folder);
    /// Begins a file that replaces `target`.
    [[nodiscard]] text::Output& add(std::string target, TemporaryFile::Target kind);
    void sync();
    void replaceAll();

    std::unique_ptr<ModelOutput> one_; // null for a folder
    std::string folder_;
    std::map<std::string, bool, std::less<>> isNewFolder_; // by path
    std::size_t openCount_ = 0;
    FileSystems fileSystems_;             // of `files_`
    std::deque<File> files_;              // of a folder, and those beside
    std::unique_ptr<ModelOutput> stream_; // beside, if it is not a regular file
    text::Output* beside_ = nullptr;
};

} // namespace petal
