#include "petal/units/unitOptions.h"

#include "petal/Failure.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace petal {

void describeUnitOptions(CLI::App& command, UnitChoices& choices) {
    command
        .add_option("--units", choices.mode,
                    "What to do about controlled units: warn of missing ones; require them all, or\n"
                    "end with status 4; skip them, leaving what stands in the model's own file")
        ->check(CLI::IsMember({"require", "warn", "skip"}).description(""))
        ->type_name("require|warn|skip")
        ->capture_default_str();
    command
        .add_option("--path-map", choices.pathMaps,
                    "What a path symbol in the names of units stands for; may be given for each symbol.\n"
                    "Symbols that are not given are taken from the environment. With auto, petal works\n"
                    "out from where missing units are what their symbols must stand for")
        ->type_name("SYMBOL=FOLDER")
        ->allow_extra_args(false);
    command
        .add_option("--unit-dir", choices.folders,
                    "A folder to search, with all below it, for units that are not where the model\n"
                    "says; may be given several times")
        ->type_name("FOLDER")
        ->allow_extra_args(false);
}

bool mapsAutomatically(const UnitChoices& choices) {
    return std::ranges::find(choices.pathMaps, automaticPathMap) != choices.pathMaps.end();
}

units::UnitLocator makeUnitLocator(const UnitChoices& choices) {
    units::PathSymbols symbols;
    for (const std::string& pathMap : choices.pathMaps) {
        if (pathMap == automaticPathMap) {
            continue;
        }
        const std::size_t equals = pathMap.find('=');
        if (equals == std::string::npos || equals == 0 || equals + 1 == pathMap.size()) {
            throw Failure(Outcome::wrongUsage, "--path-map: '" + pathMap + "' is not SYMBOL=FOLDER",
                          "Name a path symbol and its folder, such as WORKSPACE=/models, or give auto.");
        }
        symbols.map(pathMap.substr(0, equals), pathMap.substr(equals + 1));
    }
    return {std::move(symbols), {choices.folders.begin(), choices.folders.end()}};
}

} // namespace petal
