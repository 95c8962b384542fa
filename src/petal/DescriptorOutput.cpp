#include "petal/DescriptorOutput.h"

#include "petal/writeFully.h"

#include <unistd.h>

#include <utility>

namespace petal {

DescriptorOutput::~DescriptorOutput() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void DescriptorOutput::write(std::string_view bytes) {
    writeFully(descriptor_, bytes);
}

void DescriptorOutput::commit() {
    if (::close(std::exchange(descriptor_, -1)) != 0) {
        throwErrno();
    }
}

bool DescriptorOutput::isTerminal() const {
    return ::isatty(descriptor_) == 1;
}

} // namespace petal
