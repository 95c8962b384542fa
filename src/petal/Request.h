#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace petal {

enum class Command {
    help,
    version,
    options,
    specification,
    formats,
    schema,
    import,
    info,
    mergeReports,
    units,
    textconv,
    draw,
    catalog,
    diff
};

/// How to find the controlled units of a model. Texts are the bytes that the shell gave.
struct UnitChoices {
    std::string mode = "warn";         // or "require", "skip"
    std::vector<std::string> pathMaps; // each "SYMBOL=FOLDER", or "auto"
    std::vector<std::string> folders;  // to search, with all below them
};

/// A form in which an import writes the model, and where.
struct Destination {
    std::string format;                               // of an exporter that writes something
    std::optional<std::string> path;                  // unset or "-": standard output
    int descriptor = -1;                              // unless negative, where to write; the path then only names it
    std::optional<std::string> beside = std::nullopt; // a further file, which an option of the format names
    int besideDescriptor = -1;                        // likewise, of `beside`
};

/// The settings of one import. Texts are the bytes that the shell gave.
struct ImportRequest {
    std::string file;
    std::optional<std::string> types;
    std::string encoding = "auto";
    std::optional<std::string> format;      // one of the exporters; unset: it follows from the output
    std::vector<std::string> formatOptions; // each "NAME=VALUE"
    std::vector<std::string> outputs;       // "-": standard output; empty: the same
    std::vector<Destination> destinations;  // chosen by these four; empty: no model is written
    std::string logLevel = "WARNING";       // a word of Severity.h
    std::string logFormat = "text";         // or "json"
    std::optional<std::string> log;         // unset or "-": standard error
    UnitChoices units;
    bool areUnitsTold = true;          // false: the caller reports missing units; the log only counts them
    std::optional<std::string> ledger; // "-": standard output; for several files a folder
    bool ledgerListsAll = false;
    std::vector<std::string> failOn; // of "loss", "damage", "warning", "encoding" and "omission"
    bool namesFile = true;           // false: the model has neither its file's name nor its path
    bool isSummarised = true;        // the ledger, in lines on standard error
    bool isCounted = true;           // false: no ledger is made unless something else needs it
    bool areObjectsCounted = true;   // false: no number is told, unless a format tells it
    int ledgerDescriptor = -1;       // unless negative, where to write the ledger; `ledger` then only names it
};

/// The files for `petal import`, each imported with the options of an `ImportRequest`, and how to process them.
struct JobsRequest {
    std::vector<std::string> inputs;        // files and folders
    std::optional<std::string> filesFrom;   // a list of more, or "-": standard input
    bool nulSeparated = false;              // the list; otherwise one to a line
    int parallel = 1;                       // imports at a time
    bool failFast = false;                  // keep nothing of the files after the first failure
    bool resume = false;                    // skip files with complete and newer outputs
    bool inProcess = false;                 // import a single file without a child process, also with a report
    std::optional<double> timeout;          // of each import, in seconds
    std::optional<std::uint64_t> maxMemory; // of each import, in bytes
    bool quiet = false;                     // no progress, final table or summary
    std::optional<std::string> report;      // "-": standard output
};

/// The arguments of `petal info`.
struct InfoRequest {
    std::vector<std::string> files; // bytes as the shell gave them; "-" is standard input
    bool asJson = false;
};

/// The arguments of `petal report merge`.
struct MergeRequest {
    std::vector<std::string> reports;
    std::optional<std::string> output; // unset or "-": standard output
};

/// The arguments of `petal units`.
struct UnitsRequest {
    std::vector<std::string> files; // bytes as the shell gave them
    UnitChoices units;
    bool asJson = false;
};

/// The arguments of `petal draw`.
struct DrawRequest {
    std::vector<std::string> inputs; // files and folders
    std::optional<std::string> output;
    std::string writer = "svg";        // or "drawio"
    std::vector<std::string> options;  // each "NAME=VALUE"
    std::vector<std::string> diagrams; // names of those to draw; empty: all
    bool lists = false;                // instead of drawing
    bool asJson = false;               // the list
    int parallel = 1;                  // how many files at a time
    bool quiet = false;                // report failures only
    UnitChoices units;
};

/// The arguments of `petal catalog`.
struct CatalogRequest {
    ImportRequest import;              // types, encoding and units
    JobsRequest jobs;                  // the models; with `question` one input, the catalogue
    std::optional<std::string> output; // the catalogue
    std::string source = "objects";    // or "none", "all"
    std::optional<std::string> question;
    bool asJson = false;    // the answer
    bool asCsv = false;     // likewise
    std::uint32_t part = 0; // of `parts`, from 1; 0: all models
    std::uint32_t parts = 0;
    bool isMerge = false; // of the catalogues that `jobs` names as its inputs
};

/// The arguments of `petal formats`.
struct FormatsRequest {
    std::optional<std::string> format; // one of the exporters; unset: all
    bool asJson = false;
};

/// The arguments of `petal schema`.
struct SchemaRequest {
    std::string name; // of one of the schemas
};

/// The arguments of `petal textconv`.
struct TextconvRequest {
    std::string file; // bytes as the shell gave them
};

/// The arguments of `petal diff`.
struct DiffRequest {
    std::vector<std::string> models; // two, or the arguments of git's external diff; bytes as the shell gave them
    bool isGit = false;
    std::string form = "text";             // of diff::forms()
    bool isStatistic = false;              // counts by package instead
    std::optional<std::string> output;     // unset or "-": standard output
    std::string colour = "auto";           // or "always", "never"
    std::string renames = "content";       // or "quid", "no"
    std::vector<std::string> shown;        // of "layout", "order", "quids", "encoding" and "units"
    std::vector<std::string> ignoredRules; // names
    std::vector<std::string> ignoreFiles;
    std::vector<std::string> failOn; // "breaking", "any" and names of rules
    bool listsRules = false;         // instead of comparing
    bool quiet = false;
    std::optional<std::string> types; // as of an import
    std::string encoding = "auto";
    UnitChoices units;
};

struct Request {
    Command command = Command::help;
    std::string helpText; // of the command `help`
    ImportRequest import; // without the file
    JobsRequest jobs;
    MergeRequest merge;
    InfoRequest info;
    UnitsRequest units;
    FormatsRequest formats;
    SchemaRequest schema;
    bool isVersionJson = false; // of the command `version`
    TextconvRequest textconv;
    DrawRequest draw;
    CatalogRequest catalog;
    DiffRequest diff;
};

} // namespace petal
