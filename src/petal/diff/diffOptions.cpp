#include "petal/diff/diffOptions.h"

#include "diff/writers.h"
#include "petal/units/unitOptions.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace petal {

namespace {

std::string formDescription() {
    std::string text = "The form of the report:";
    for (const diff::Form& form : diff::forms()) {
        text += "\n  " + std::string(form.name) + ": " + std::string(form.description);
    }
    return text;
}

std::vector<std::string> formNames() {
    std::vector<std::string> names;
    std::ranges::transform(diff::forms(), std::back_inserter(names),
                           [](const diff::Form& form) { return std::string(form.name); });
    return names;
}

CLI::Option* addChoice(CLI::App& diff, const std::string& name, std::string& value,
                       const std::vector<std::string>& values, const std::string& description) {
    return diff.add_option(name, value, description)
        ->check(CLI::IsMember(values).description(""))
        ->type_name(CLI::detail::join(values, "|"))
        ->capture_default_str();
}

} // namespace

void describeDiff(CLI::App& diff, DiffRequest& request) {
    diff.add_option("MODEL", request.models,
                    "The old and the new model: model files, JSON documents of petal, or - for standard input")
        ->type_name("");
    addChoice(diff, "-f,--format", request.form, formNames(), formDescription());
    diff.add_flag("--stat", request.isStatistic, "Print counts of the changes, a line for each package");
    diff.add_option("-o", request.output, "Output file (default: standard output; - for standard output)")
        ->type_name("FILE");
    addChoice(diff, "--color", request.colour, {"auto", "always", "never"}, "Colours of the form text");
    addChoice(diff, "--renames", request.renames, {"content", "quid", "no"},
              "The evidence that an element of another name or owner is the same: its quid or else its\n"
              "content, its quid alone, or none");
    diff.add_option("--show", request.shown,
                    "Report differences that do not count otherwise; several with commas:\n"
                    "layout, order, quids, encoding, units")
        ->delimiter(',')
        ->check(CLI::IsMember({"layout", "order", "quids", "encoding", "units"}).description(""))
        ->type_name("WHAT")
        ->allow_extra_args(false);
    diff.add_option("--ignore", request.ignoredRules, "Leave out the changes of a rule; several with commas")
        ->delimiter(',')
        ->type_name("RULE")
        ->allow_extra_args(false);
    diff.add_option("--ignore-file", request.ignoreFiles,
                    "Leave out changes as the lines of a file say: RULE, or RULE and a pattern of qualified\n"
                    "names with *, ? and [...]; * for any rule, # for a comment")
        ->type_name("FILE")
        ->allow_extra_args(false);
    diff.add_option("--fail-on", request.failOn,
                    "End with status 3 if there is such a change: breaking, any, or a rule; several with\n"
                    "commas")
        ->delimiter(',')
        ->type_name("breaking|any|RULE")
        ->allow_extra_args(false);
    diff.add_flag("--rules", request.listsRules,
                  "Print the rules, each with its weight and meaning, and compare nothing");
    diff.add_flag("--git", request.isGit,
                  "Take the arguments of git's external diff: 7, 9 for a renamed file, 1 for an unmerged one.\n"
                  "Units are skipped; git compares them by themselves");
    diff.add_flag("-q,--quiet", request.quiet, "Print nothing of missing units and of how elements were matched");
    diff.add_option("--types", request.types, "Map declared types as 'petal import --types' does")->type_name("NAME");
    diff.add_option("--encoding", request.encoding, "Encoding of the files' texts, as for 'petal import'")
        ->type_name("NAME")
        ->capture_default_str();
    describeUnitOptions(diff, request.units);
}

} // namespace petal
