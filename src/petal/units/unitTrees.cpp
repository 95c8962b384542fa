#include "petal/units/unitTrees.h"

#include "petal/Failure.h"

#include <system_error>

namespace petal {

namespace {

template <class Read>
units::UnitTree readModel(const std::string& path, Read read) {
    try {
        units::UnitTree tree = read();
        if (tree.files[0].contents.isModel) {
            return tree;
        }
    } catch (const std::system_error& error) {
        throw Failure(Outcome::inputNotRead, "cannot read '" + path + "': " + error.code().message(), "");
    }
    throw Failure(Outcome::inputNotRead, "'" + path + "' is not a model file", "");
}

} // namespace

units::UnitTree readModelTree(const std::string& path, units::UnitLocator& locator) {
    return readModel(path, [&] { return units::readUnitTree(path, locator); });
}

units::UnitTree readModelAlone(const std::string& path) {
    return readModel(path, [&] {
        units::UnitTree tree;
        tree.files.push_back(
            {.path = path, .contents = units::readUnitFile(path, units::Extent::headAndKind), .units = {}});
        return tree;
    });
}

units::LostUnits lossesOf(std::span<const std::string> files, units::UnitLocator& locator) {
    units::LostUnits lost;
    for (const std::string& path : files) {
        try {
            lost.add(units::lossesOf(readModelTree(path, locator), locator.getSymbols()));
        } catch (const Failure&) {
            continue; // the caller reports it when it uses the model
        }
    }
    return lost;
}

} // namespace petal
