#include "export/options.h"
#include "layout/makeScene.h"
#include "layout/write.h"
#include "petal/Failure.h"
#include "petal/commands.h"
#include "petal/draw/Drawing.h"
#include "petal/draw/pictureNames.h"
#include "petal/jobs/Sources.h"
#include "petal/jobs/plan.h"
#include "petal/output/Descriptor.h"
#include "petal/output/FileUses.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/OutputFiles.h"
#include "petal/output/fileFailure.h"
#include "petal/units/lossLines.h"
#include "petal/units/unitOptions.h"
#include "petal/units/unitTrees.h"
#include "text/IndentedJson.h"
#include "text/escape.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

namespace petal {

namespace {

using layout::NodeId;

constexpr std::size_t mostAtATime = 2000; // files that are brought to the disk
constexpr std::size_t mostOpen = 200;     // those of them that replace others, each with a descriptor
constexpr std::string_view svgEnding = ".svg";
constexpr std::string_view drawioEnding = ".drawio";

constexpr std::array options{exporter::Option{.name = "theme",
                                              .values = "file|plain",
                                              .byDefault = "file",
                                              .description = "the colours of the file, or black on white"}};

layout::Theme themeOf(const DrawRequest& request) {
    try {
        return exporter::OptionValues(options, request.options).get("theme") == "plain" ? layout::Theme::plain
                                                                                        : layout::Theme::file;
    } catch (const exporter::WrongOption& wrong) {
        throw Failure(Outcome::wrongUsage, wrong.what(), "");
    }
}

/// The kinds of views that no rule is for, and how many of them there are.
using Unknown = std::map<std::string, std::size_t>;

void note(const layout::Scene& scene, Unknown& unknown) {
    for (const layout::Item& item : scene.items) {
        if (item.isUnknown) {
            ++unknown[std::string(item.kind)];
        }
    }
}

void tell(const std::string& path, const Unknown& unknown) {
    std::string line;
    for (const auto& [kind, count] : unknown) {
        line += (line.empty() ? "" : ", ") + std::to_string(count) + " " + text::printableText(kind);
    }
    if (!line.empty()) {
        line =
            "petal: " + text::printableText(path) + ": views of unknown kinds, drawn as boxes or lines: " + line + "\n";
        std::fputs(line.c_str(), stderr);
    }
}

/// Opens an output, has it written and makes it final.
template <class Write>
void writeTo(const std::optional<std::string>& path, Write write) {
    try {
        if (path) {
            const std::filesystem::path folder = std::filesystem::path(*path).parent_path();
            if (!folder.empty()) {
                std::filesystem::create_directories(folder);
            }
        }
        const auto output = ModelOutput::open(path);
        text::BufferedOutput buffered(*output);
        write(buffered);
        buffered.flush();
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure(outputName(path), error);
    }
}

/// The files that are written, none of which may be one that is read.
void checkUses(const Drawing& drawing, const std::vector<std::string>& outputs) {
    FileUses uses;
    for (const units::ResolvedFile& file : drawing.files.files) {
        uses.reads(file.path);
    }
    std::ranges::for_each(outputs, [&](const std::string& path) { uses.writes(path); });
}

bool isFile(const DrawRequest& request) {
    return !request.output || *request.output == "-" || namedDescriptor(*request.output) >= 0 ||
           request.output->ends_with(svgEnding);
}

/// The file that was opened last.
class LastOpened final : public text::Output {
public:
    explicit LastOpened(OutputFiles& files) : files_(files) {}
    void open(const std::string& name) { last_ = &files_.open(name); }
    void write(std::string_view bytes) override { last_->write(bytes); }

private:
    OutputFiles& files_;
    text::Output* last_ = nullptr;
};

/// Writes each diagram to a file of its own below a folder.
template <class Write>
void writePictures(const Drawing& drawing, const std::filesystem::path& folder, Write write) {
    if (std::filesystem::exists(std::filesystem::symlink_status(folder))) { // else no file can be in it
        std::vector<std::string> outputs;
        for (const std::string& name : drawing.names) {
            outputs.push_back((folder / name).string().append(svgEnding));
        }
        checkUses(drawing, outputs);
    }
    try {
        OutputFiles files(folder.string());
        LastOpened last(files);
        text::BufferedOutput output(last); // one for all: it is large
        for (std::size_t index = 0; index < drawing.names.size(); ++index) {
            last.open(drawing.names[index] + std::string(svgEnding));
            write(drawing.diagrams[index], output);
            output.flush();
            files.close();
            if (files.openCount() >= mostOpen || (index + 1) % mostAtATime == 0) {
                files.commit();
            }
        }
        files.commit();
    } catch (const std::system_error& error) {
        throw outputFailure("the pictures in '" + folder.string() + "'", error);
    }
}

/// Draws one model; the output is a file for one picture, a folder for SVG, and a file for draw.io. Whether the model
/// has diagrams of the names asked for; if not, nothing is written.
bool drawModel(const std::string& path, const DrawRequest& request, bool isSingle, units::UnitLocator& locator) {
    const layout::Theme theme = themeOf(request);
    const std::unique_ptr<Drawing> drawing = readDrawing(path, request, locator, isSingle);
    if (drawing->diagrams.empty() && !request.diagrams.empty()) {
        return false;
    }
    const layout::Elements elements(drawing->tree);
    Unknown unknown;
    const auto sceneOf = [&](NodeId diagram) {
        layout::Scene scene = layout::makeScene(drawing->tree, elements, diagram);
        note(scene, unknown);
        return scene;
    };
    if (request.writer == "drawio") {
        checkUses(*drawing, {request.output.value_or("")});
        writeTo(request.output, [&](text::BufferedOutput& output) {
            layout::DrawioWriter writer(theme, output);
            for (const NodeId diagram : drawing->diagrams) {
                writer.write(sceneOf(diagram));
            }
            writer.end();
        });
    } else if (isSingle && isFile(request)) {
        if (drawing->diagrams.empty()) {
            throw Failure(Outcome::inputNotRead, "'" + path + "' has no diagrams", "");
        }
        if (drawing->diagrams.size() != 1) {
            throw Failure(Outcome::wrongUsage,
                          "'" + path + "' has " + std::to_string(drawing->diagrams.size()) +
                              " diagrams to draw, and a file holds one",
                          "Name a folder with -o, or one diagram with --diagram.");
        }
        checkUses(*drawing, {request.output.value_or("")});
        writeTo(request.output, [&](text::BufferedOutput& output) {
            layout::writeSvg(sceneOf(drawing->diagrams.front()), theme, output);
        });
    } else {
        writePictures(*drawing, *request.output, [&](NodeId diagram, text::BufferedOutput& output) {
            layout::writeSvg(sceneOf(diagram), theme, output);
        });
    }
    if (!request.quiet) {
        tell(path, unknown);
    }
    return true;
}

/// Prints the diagrams of a model; of several, each line names the model.
void listModel(const Source& source, const Drawing& drawing, bool isSingle, bool asJson, text::BufferedOutput& output,
               text::IndentedJson& json) {
    for (std::size_t index = 0; index < drawing.diagrams.size(); ++index) {
        const NodeId diagram = drawing.diagrams[index];
        const layout::Node& node = drawing.tree[diagram];
        const std::string name = qualifiedName(drawing.tree, diagram);
        const std::size_t count = layout::itemCount(drawing.tree, diagram);
        if (!asJson) {
            output.put(text::printableText(node.text()) + "\t" + text::printableText(name) + "\t" +
                       std::to_string(count));
            output.put(isSingle ? "\n" : "\t" + text::printableText(source.path) + "\n");
            continue;
        }
        const auto member = [&](const char* key, std::string_view value) {
            if (!value.empty()) {
                json.key(key);
                json.text(value);
            }
        };
        json.startObject();
        member("model", text::validText(source.path));
        member("kind", node.text());
        json.key("name");
        json.text(name);
        json.key("items");
        json.number(static_cast<std::int64_t>(count));
        member("quid", drawing.tree.text(diagram, "quid"));
        member("file", drawing.tree.fileName(node.head().file));
        json.key("line");
        json.number(static_cast<std::int64_t>(node.head().line));
        member("picture", drawing.names[index] + std::string(svgEnding));
        json.endObject();
    }
}

/// Throws a `Failure` for a folder that could not be searched.
void checkReadable(const Source& source) {
    if (!source.unreadable.empty()) {
        throw Failure(Outcome::inputNotRead, "cannot search the folder '" + source.path + "': " + source.unreadable,
                      "");
    }
}

[[noreturn]] void throwSomeFailed(std::size_t failed, std::size_t all) {
    throw Failure(Outcome::someFailed, std::to_string(failed) + " of " + std::to_string(all) + " files failed", "");
}

/// A model that fails costs only its own diagrams, if there are several.
void listDiagrams(const std::vector<Source>& sources, const DrawRequest& request, bool isSingle,
                  units::UnitLocator& locator) {
    std::size_t failed = 0;
    std::size_t listed = 0;
    writeTo(std::nullopt, [&](text::BufferedOutput& output) {
        text::IndentedJson json(output);
        if (request.asJson) {
            json.startList();
        }
        for (const Source& source : sources) {
            try {
                checkReadable(source);
                const std::unique_ptr<Drawing> drawing = readDrawing(source.path, request, locator, isSingle);
                listModel(source, *drawing, sources.size() == 1, request.asJson, output, json);
                listed += drawing->diagrams.size();
            } catch (const Failure& failure) {
                if (isSingle) {
                    throw;
                }
                printFailure(failure.what(), failure.getAdvice());
                ++failed;
            }
        }
        if (request.asJson) {
            json.endList();
            output.put('\n');
        }
    });
    if (failed > 0) {
        throwSomeFailed(failed, sources.size());
    }
    if (listed == 0 && !request.diagrams.empty()) {
        throw noDiagramNamed("the models have", request);
    }
}

constexpr int nothingNamed = 127; // exit status of a worker whose model lacks the diagrams that are named

/// Processes that each do one task, which returns the exit status.
class Workers {
public:
    /// Has the task done, once fewer than `most` are under way. Throws `std::system_error` when no process can be made.
    template <class Task>
    void start(int most, Task task) {
        while (running_ >= most) {
            waitForOne();
        }
        const pid_t process = ::fork();
        if (process < 0) {
            throwErrno();
        }
        if (process == 0) {
            ::_exit(task());
        }
        ++running_;
    }
    void waitForAll() {
        while (running_ > 0) {
            waitForOne();
        }
    }
    [[nodiscard]] std::size_t getFailedCount() const { return failed_; }
    [[nodiscard]] std::size_t getLackingCount() const { return lacking_; }

private:
    void waitForOne() {
        int status = 0;
        pid_t ended = -1;
        do {
            ended = ::wait(&status);
        } while (ended < 0 && errno == EINTR);
        --running_;
        const bool hasEnded = ended >= 0 && WIFEXITED(status);
        lacking_ += hasEnded && WEXITSTATUS(status) == nothingNamed ? 1 : 0;
        failed_ += !hasEnded || (WEXITSTATUS(status) != 0 && WEXITSTATUS(status) != nothingNamed) ? 1 : 0;
        if (ended >= 0 && WIFSIGNALED(status)) {
            std::fputs("petal: a signal ended the process that drew a file\n", stderr);
        }
    }

    int running_ = 0;
    std::size_t failed_ = 0;
    std::size_t lacking_ = 0;
};

/// As a task: tells its failure.
int drawSource(const Source& source, const DrawRequest& request, units::UnitLocator& locator) {
    try {
        checkReadable(source);
        return drawModel(source.path, request, false, locator) ? exitNumber(Outcome::success) : nothingNamed;
    } catch (const Failure& failure) {
        printFailure(failure.what(), failure.getAdvice());
        return exitNumber(failure.getOutcome());
    } catch (const std::exception& failure) {
        printFailure(failure.what(), "");
        return exitNumber(Outcome::unexpected);
    }
}

/// Refuses a name for the other form: a folder called shop.drawio, or a file for draw.io called shop.svg.
void checkEnding(const DrawRequest& request) {
    const bool isDrawio = request.writer == "drawio";
    if (request.output && request.output->ends_with(isDrawio ? svgEnding : drawioEnding) &&
        !std::filesystem::is_directory(*request.output)) {
        throw Failure(Outcome::wrongUsage,
                      "'" + *request.output + "' is the name of a file for " +
                          (isDrawio ? "a picture, and --as drawio writes a file for draw.io"
                                    : "draw.io, which --as drawio writes"),
                      "");
    }
}

/// Whether the name is that of a picture, and nothing says that a folder is meant.
bool isNamedLikeFile(const std::string& output) {
    return (output.ends_with(svgEnding) || output.ends_with(drawioEnding)) && !std::filesystem::is_directory(output);
}

void drawSeveral(const std::vector<Source>& sources, DrawRequest request, units::UnitLocator& locator) {
    if (!request.output || *request.output == "-") {
        throw Failure(Outcome::wrongUsage, "the pictures of several models need a folder", "Name one with -o.");
    }
    if (isNamedLikeFile(*request.output)) {
        throw Failure(Outcome::wrongUsage,
                      "several models are drawn, and '" + *request.output + "' is the name of one file",
                      "Name a folder with -o: each model has a place of its own in it.");
    }
    const std::vector<std::string> outputs =
        planOutputs(sources, *request.output, request.writer == "drawio" ? drawioEnding : std::string_view());
    locator.listSearchFolders();
    Workers workers;
    for (std::size_t index = 0; index < sources.size(); ++index) {
        request.output = outputs[index];
        workers.start(request.parallel, [&] { return drawSource(sources[index], request, locator); });
    }
    workers.waitForAll();
    if (const std::size_t failed = workers.getFailedCount(); failed > 0) {
        throwSomeFailed(failed, sources.size());
    }
    if (workers.getLackingCount() == sources.size()) {
        throw noDiagramNamed("the models have", request);
    }
}

} // namespace

void drawDiagrams(const DrawRequest& request) {
    static_cast<void>(themeOf(request)); // refused before anything is read
    checkEnding(request);
    JobsRequest jobs;
    jobs.inputs = request.inputs;
    Sources found = findSources(jobs);
    if (found.files.empty()) {
        throw Failure(Outcome::inputNotRead, "the arguments name no model file",
                      "In a folder, model files are those whose names end in '.mdl'.");
    }
    units::UnitLocator locator = makeUnitLocator(request.units);
    if (mapsAutomatically(request.units)) {
        std::vector<std::string> paths;
        std::ranges::transform(found.files, std::back_inserter(paths), &Source::path);
        units::SymbolSearch search(std::move(found.folders), std::move(found.besides));
        const auto mapped = units::mapSymbols(locator, search, [&] { return lossesOf(paths, locator); });
        if (!request.quiet) {
            std::fputs(asNotes(mappingLines(mapped)).c_str(), stderr);
        }
    }
    if (request.lists) {
        listDiagrams(found.files, request, isSingleFile(jobs), locator);
    } else if (isSingleFile(jobs)) {
        drawModel(found.files.front().path, request, true, locator);
    } else {
        drawSeveral(found.files, request, locator);
    }
}

} // namespace petal
