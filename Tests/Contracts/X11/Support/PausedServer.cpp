// SPDX-License-Identifier: MIT
#include "Tests/Contracts/X11/Support/PausedServer.h"

#include <dlfcn.h>
#include <poll.h>
#include <pthread.h>

#include <cstring>

namespace velmora::test {
namespace {

thread_local PausedServer* paused = nullptr;

/// Whether code of the library that speaks with X servers is there.
bool isOfClientLibrary(const void* address) {
    Dl_info info{};
    return dladdr(address, &info) != 0 && info.dli_fname != nullptr &&
           std::strstr(info.dli_fname, "libxcb.so") != nullptr;
}

}  // namespace

PausedServer::PausedServer(PrivateServer& server) : server_(server) {
    server_.pause();
    paused = this;
}

PausedServer::~PausedServer() {
    paused = nullptr;
    server_.goOn();
}

void PausedServer::noteWait() {
    if (paused != nullptr) {
        paused->wasAwaited_ = true;
        paused->server_.goOn();
    }
}

}  // namespace velmora::test

/// Stands before the system's own in this program: it is what the client library waits with, also
/// for room to write, which there mostly is.
extern "C" __attribute__((visibility("default"))) int poll(pollfd* descriptors, nfds_t count,
                                                           int timeout) {
    using Poll = int(pollfd*, nfds_t, int);
    static auto* const real = reinterpret_cast<Poll*>(dlsym(RTLD_NEXT, "poll"));
    if (timeout < 0 && velmora::test::isOfClientLibrary(__builtin_return_address(0))) {
        if (const int ready = real(descriptors, count, 0); ready != 0) {
            return ready;
        }
        velmora::test::PausedServer::noteWait();
    }
    return real(descriptors, count, timeout);
}

/// The same where another thread of the program reads the connection, as of the toolkit's.
extern "C" __attribute__((visibility("default"))) int pthread_cond_wait(pthread_cond_t* condition,
                                                                        pthread_mutex_t* mutex) {
    using Wait = int(pthread_cond_t*, pthread_mutex_t*);
    static auto* const real = reinterpret_cast<Wait*>(dlsym(RTLD_NEXT, "pthread_cond_wait"));
    if (velmora::test::isOfClientLibrary(__builtin_return_address(0))) {
        velmora::test::PausedServer::noteWait();
    }
    return real(condition, mutex);
}
