#include "CapturedStreams.h"

#include "require.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace fuzz {

CapturedStreams::CapturedStreams() {
    for (int stream = 0; stream < count; ++stream) {
        kept_[stream] = ::fcntl(stream, F_DUPFD_CLOEXEC, count);
        require(kept_[stream] >= 0, "a standard stream is missing");
    }
}

CapturedStreams::~CapturedStreams() {
    for (const int stream : kept_) {
        ::close(stream);
    }
}

void CapturedStreams::start() {
    MemoryFile* const files[count] = {&input_, &output_, &errors_};
    std::fflush(nullptr);
    for (int stream = 0; stream < count; ++stream) {
        files[stream]->put("");
        ::dup2(files[stream]->getDescriptor(), stream);
    }
}

void CapturedStreams::stop() {
    std::fflush(nullptr);
    for (int stream = 0; stream < count; ++stream) {
        ::dup2(kept_[stream], stream);
    }
}

} // namespace fuzz
