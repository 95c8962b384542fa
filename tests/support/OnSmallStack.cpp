#include "support/OnSmallStack.h"

#include <pthread.h>
#include <stdexcept>

namespace {

void* runWork(void* work) {
    (*static_cast<const std::function<void()>*>(work))();
    return nullptr;
}

} // namespace

void onSmallStack(const std::function<void()>& work) {
    constexpr std::size_t stackSize = 256 * 1024;
    pthread_attr_t attributes{};
    pthread_t thread{};
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, stackSize);
    const int error = pthread_create(&thread, &attributes, runWork, const_cast<std::function<void()>*>(&work));
    pthread_attr_destroy(&attributes);
    if (error != 0) {
        throw std::runtime_error("no thread with a small stack");
    }
    pthread_join(thread, nullptr);
}
