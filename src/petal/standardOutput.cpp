#include "petal/standardOutput.h"

#include "petal/ModelOutput.h"
#include "petal/fileFailure.h"

namespace petal {

void writeToStandardOutput(std::string_view text) {
    try {
        const auto output = ModelOutput::open(std::nullopt);
        output->write(text);
        output->commit();
    } catch (const std::system_error& error) {
        throw outputFailure("standard output", error);
    }
}

} // namespace petal
