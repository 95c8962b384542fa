// Writes a model file, and what it holds as JSON on the standard error stream.

#include "model/Amount.h"
#include "model/ModelFile.h"
#include "model/Shapes.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace {

struct Closing {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};

struct Wanted {
    std::string shape = "plain";
    std::string path = "-";
    double megabytes = 1;
    std::uint64_t count = 0;
    std::uint64_t seed = 1;
};

void describe(CLI::App& app, Wanted& wanted) {
    std::string known;
    for (const bench::Shape& shape : bench::shapes()) {
        known += "\n  " + std::string(shape.name) + ": " + std::string(shape.description) + "; counted in " +
                 std::string(shape.things);
    }
    constexpr double mostMegabytes = 1e6;
    constexpr std::uint64_t mostThings = 1'000'000'000;
    app.add_option("shape", wanted.shape, "The form of the model:" + known);
    CLI::Option* const size =
        app.add_option("-m,--megabytes", wanted.megabytes, "How big it shall be, in units of 1,000,000 bytes")
            ->check(CLI::Range(0.0, mostMegabytes));
    app.add_option("-n,--count", wanted.count, "How many there shall be of what the shape is counted in")
        ->check(CLI::Range(std::uint64_t{1}, mostThings))
        ->excludes(size);
    app.add_option("-s,--seed", wanted.seed, "Where its random numbers start");
    app.add_option("-o", wanted.path, "The file; - is standard output");
}

/// Throws std::exception when the model cannot be written.
void make(const Wanted& wanted) {
    const bench::Shape* const shape = bench::findShape(wanted.shape);
    if (shape == nullptr) {
        throw std::invalid_argument("there is no shape '" + wanted.shape + "'");
    }
    const bool isFile = wanted.path != "-";
    const std::unique_ptr<std::FILE, Closing> file(isFile ? std::fopen(wanted.path.c_str(), "w") : nullptr);
    if (isFile && !file) {
        throw std::system_error(errno, std::generic_category(), wanted.path);
    }
    const bench::Amount amount = wanted.count != 0
                                     ? bench::Amount::ofThings(wanted.count)
                                     : bench::Amount::ofBytes(static_cast<std::uint64_t>(wanted.megabytes * 1e6));
    std::cerr << bench::writeModelFile(isFile ? file.get() : stdout, *shape, amount, wanted.seed) << '\n';
}

} // namespace

int main(int argc, char** argv) {
    try {
        Wanted wanted;
        CLI::App app("Writes a model file; on standard error, what is in it.");
        describe(app, wanted);
        app.failure_message(
            [](const CLI::App*, const CLI::Error& error) { return "make-model: " + std::string(error.what()) + '\n'; });
        CLI11_PARSE(app, argc, argv);
        make(wanted);
    } catch (const std::exception& error) {
        std::cerr << "make-model: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
