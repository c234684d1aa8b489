#pragma once

// Runs code that must not need a stack as deep as its data.

#include <pthread.h>

#include <cstddef>
#include <stdexcept>

namespace Quenzo::Testing {

/// Runs a call, which must not throw, on a thread of its own with a stack of that many bytes. Recursion over deep data
/// ends the program there, long before it would on the main thread.
template <typename Call>
void RunOnSmallStack(std::size_t bytes, Call call) {
    pthread_attr_t attributes;
    pthread_t thread = {};
    const auto run = [](void* argument) -> void* {
        (*static_cast<Call*>(argument))();
        return nullptr;
    };
    const bool hasRun = pthread_attr_init(&attributes) == 0 && pthread_attr_setstacksize(&attributes, bytes) == 0 &&
                        pthread_create(&thread, &attributes, run, &call) == 0 && pthread_join(thread, nullptr) == 0;
    pthread_attr_destroy(&attributes);
    if (!hasRun) {
        throw std::runtime_error("a thread with a small stack could not be run");
    }
}

}  // namespace Quenzo::Testing
