#include "petal/units/unitOptions.h"

#include "petal/Failure.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace petal {

void describeUnitOptions(CLI::App& command, UnitChoices& choices) {
    command
        .add_option("--units", choices.mode,
                    "Controlled units: warn of missing ones; require all, else end with status 4; or skip\n"
                    "them and import only the model's own file")
        ->check(CLI::IsMember({"require", "warn", "skip"}).description(""))
        ->type_name("require|warn|skip")
        ->capture_default_str();
    command
        .add_option("--path-map", choices.pathMaps,
                    "Folder that a path symbol in the names of units means; once per symbol. Other\n"
                    "symbols are taken from the environment. With auto, petal derives the folders from\n"
                    "where it finds the missing units")
        ->type_name("SYMBOL=FOLDER")
        ->allow_extra_args(false);
    command
        .add_option("--unit-dir", choices.folders,
                    "Search this folder, with its subfolders, for units that are not at their place; may\n"
                    "be given several times")
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
