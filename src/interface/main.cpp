// Writes the files that tell of the command line below the folder that is named.

#include "interface/interfaceFiles.h"

#include <filesystem>
#include <fstream>

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    for (const petal::InterfaceFile& file : petal::interfaceFiles()) {
        const std::filesystem::path path = std::filesystem::path(argv[1]) / file.path;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream stream(path);
        stream << file.text() << std::flush;
        if (!stream) {
            return 1;
        }
    }
    return 0;
}
