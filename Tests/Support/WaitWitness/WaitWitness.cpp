// SPDX-License-Identifier: MIT
// Loaded into a program ahead of its libraries, notes what its main thread waits for once it has
// begun to look for events: a line for each wait that made the thread sleep, with its length and
// those who called for it. Waits of the event loop itself are what it is for and not noted.
//
// The notes go to the file that VELMORA_WAITS names; without it nothing is noted.
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <pthread.h>
#include <semaphore.h>
#include <sys/resource.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

constexpr int mostCallers = 64;

int notes = -1;
pid_t looking = 0;  ///< The process whose main thread looks for events.
bool isNoting = false;

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

double now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

long sleeps() {
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

const char* fileName(const char* path) {
    const char* const slash = path == nullptr ? nullptr : std::strrchr(path, '/');
    return slash != nullptr ? slash + 1 : path != nullptr ? path : "?";
}

bool isIn(const void* address, const char* library) {
    Dl_info info{};
    return dladdr(address, &info) != 0 && info.dli_fname != nullptr &&
           std::strncmp(fileName(info.dli_fname), library, std::strlen(library)) == 0;
}

/// Whether the event loop looks for events, itself or through the program's eye on it.
bool isLookForEvents(const void* caller) {
    constexpr int nearest = 4;
    if (isIn(caller, "libglib")) {
        return true;
    }
    std::array<void*, nearest> callers{};
    const int count = backtrace(callers.data(), nearest);
    return count == nearest && isIn(callers[nearest - 1], "libglib");
}

/// One wait of the main thread, from its beginning to its end.
class Wait {
  public:
    explicit Wait(const char* kind)
        : kind_(kind),
          counts_(notes >= 0 && !isNoting && gettid() == looking && getpid() == looking) {
        if (counts_) {
            sleeps_ = sleeps();
            start_ = now();
        }
    }
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;
    ~Wait() {
        if (counts_ && sleeps() != sleeps_) {
            isNoting = true;
            note(now() - start_);
            isNoting = false;
        }
    }

  private:
    void note(double milliseconds) const {
        std::array<void*, mostCallers> callers{};
        const int count = backtrace(callers.data(), mostCallers);
        std::array<char, 12000> line{};
        int length = std::snprintf(line.data(), line.size(), "%s %.3f ms:", kind_, milliseconds);
        for (int i = 0; i < count && length < 11700; ++i) {
            Dl_info info{};
            if (dladdr(callers[static_cast<std::size_t>(i)], &info) == 0 ||
                std::strstr(fileName(info.dli_fname), "wait_witness") != nullptr) {
                continue;
            }
            length += std::snprintf(
                line.data() + length, line.size() - static_cast<std::size_t>(length), " %s(%.160s)",
                fileName(info.dli_fname), info.dli_sname != nullptr ? info.dli_sname : "");
        }
        line[static_cast<std::size_t>(length++)] = '\n';
        [[maybe_unused]] const auto written =
            write(notes, line.data(), static_cast<std::size_t>(length));
    }

    const char* kind_;
    bool counts_;
    long sleeps_ = 0;
    double start_ = 0;
};

__attribute__((constructor)) void open() {
    if (const char* const path = std::getenv("VELMORA_WAITS")) {
        notes = ::open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    }
}

}  // namespace

extern "C" {

int poll(pollfd* descriptors, nfds_t count, int timeout) {
    static auto* const real = next<int(pollfd*, nfds_t, int)>("poll");
    if (gettid() != getpid() || isLookForEvents(__builtin_return_address(0))) {
        if (gettid() == getpid() && looking == 0) {
            looking = getpid();
        }
        return real(descriptors, count, timeout);
    }
    const Wait wait("poll");
    return real(descriptors, count, timeout);
}

int ppoll(pollfd* descriptors, nfds_t count, const timespec* timeout, const sigset_t* signals) {
    static auto* const real = next<int(pollfd*, nfds_t, const timespec*, const sigset_t*)>("ppoll");
    const Wait wait("poll");
    return real(descriptors, count, timeout, signals);
}

int select(int count, fd_set* reading, fd_set* writing, fd_set* failing, timeval* timeout) {
    static auto* const real = next<int(int, fd_set*, fd_set*, fd_set*, timeval*)>("select");
    const Wait wait("poll");
    return real(count, reading, writing, failing, timeout);
}

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
    static auto* const real = next<int(pthread_cond_t*, pthread_mutex_t*)>("pthread_cond_wait");
    const Wait wait("condition");
    return real(condition, mutex);
}

int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                           const timespec* until) {
    static auto* const real =
        next<int(pthread_cond_t*, pthread_mutex_t*, const timespec*)>("pthread_cond_timedwait");
    const Wait wait("condition");
    return real(condition, mutex, until);
}

int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock,
                           const timespec* until) {
    static auto* const real =
        next<int(pthread_cond_t*, pthread_mutex_t*, clockid_t, const timespec*)>(
            "pthread_cond_clockwait");
    const Wait wait("condition");
    return real(condition, mutex, clock, until);
}

int pthread_join(pthread_t thread, void** result) {
    static auto* const real = next<int(pthread_t, void**)>("pthread_join");
    const Wait wait("thread");
    return real(thread, result);
}

int sem_wait(sem_t* semaphore) {
    static auto* const real = next<int(sem_t*)>("sem_wait");
    const Wait wait("condition");
    return real(semaphore);
}

ssize_t recv(int socket, void* data, std::size_t size, int flags) {
    static auto* const real = next<ssize_t(int, void*, std::size_t, int)>("recv");
    const Wait wait("socket");
    return real(socket, data, size, flags);
}

ssize_t recvmsg(int socket, msghdr* message, int flags) {
    static auto* const real = next<ssize_t(int, msghdr*, int)>("recvmsg");
    const Wait wait("socket");
    return real(socket, message, flags);
}

int connect(int socket, const sockaddr* address, socklen_t length) {
    static auto* const real = next<int(int, const sockaddr*, socklen_t)>("connect");
    const Wait wait("socket");
    return real(socket, address, length);
}

ssize_t read(int file, void* data, std::size_t size) {
    static auto* const real = next<ssize_t(int, void*, std::size_t)>("read");
    const Wait wait("read");
    return real(file, data, size);
}

pid_t waitpid(pid_t process, int* status, int options) {
    static auto* const real = next<pid_t(pid_t, int*, int)>("waitpid");
    const Wait wait("process");
    return real(process, status, options);
}

int getaddrinfo(const char* node, const char* service, const addrinfo* hints, addrinfo** result) {
    static auto* const real =
        next<int(const char*, const char*, const addrinfo*, addrinfo**)>("getaddrinfo");
    const Wait wait("name");
    return real(node, service, hints, result);
}

int fsync(int file) {
    static auto* const real = next<int(int)>("fsync");
    const Wait wait("disk");
    return real(file);
}

int fdatasync(int file) {
    static auto* const real = next<int(int)>("fdatasync");
    const Wait wait("disk");
    return real(file);
}

int nanosleep(const timespec* time, timespec* left) {
    static auto* const real = next<int(const timespec*, timespec*)>("nanosleep");
    const Wait wait("sleep");
    return real(time, left);
}

/// Semaphores, futures and locks of the toolkit and the language wait in the system itself.
long syscall(long number, ...) {
    static auto* const real = next<long(long, ...)>("syscall");
    std::va_list rest;
    va_start(rest, number);
    std::array<long, 6> arguments{};
    for (long& each : arguments) {
        each = va_arg(rest, long);
    }
    va_end(rest);
    const auto call = [&] {
        return real(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4],
                    arguments[5]);
    };
    if (number != SYS_futex) {
        return call();
    }
    const Wait wait("futex");
    return call();
}
}
