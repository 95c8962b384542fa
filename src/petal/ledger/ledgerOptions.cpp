#include "petal/ledger/ledgerOptions.h"

#include <CLI/CLI.hpp>

namespace petal {

void describeLedgerOptions(CLI::App& command, ImportRequest& request) {
    command
        .add_option("--ledger", request.ledger,
                    "Where to write what became of every object and property of the file, as JSON\n"
                    "lines; with - on a terminal, as a table. For several files the folder to write\n"
                    "theirs to, each under the path of its file")
        ->type_name("FILE");
    command
        .add_option_function<std::string>(
            "--ledger-detail", [&request](const std::string& detail) { request.ledgerListsAll = detail == "all"; },
            "named: what is laid out, identified or kept is counted by property; all: every\n"
            "property has a line of its own")
        ->check(CLI::IsMember({"named", "all"}).description(""))
        ->type_name("named|all")
        ->default_str("named");
    command
        .add_option("--fail-on", request.failOn,
                    "What makes petal end with status 3 once all is written; several with commas\n"
                    "between them")
        ->check(CLI::IsMember({"loss", "damage", "warning", "encoding"}).description(""))
        ->type_name("loss|damage|warning|encoding")
        ->delimiter(',')
        ->allow_extra_args(false);
}

} // namespace petal
