// SPDX-License-Identifier: MIT
#include "Tests/Support/VirtualDesktop/SessionKeeper.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <set>
#include <utility>
#include <vector>

#include "Tests/Support/VirtualDesktop/ProcessTable.h"

namespace velmora::test {

namespace {

struct Message {
    pid_t session = -1;
    bool watched = false;
};

void endAll(const std::set<pid_t>& sessions) {
    // A member may start another one between the listing and the signal, hence the rounds.
    for (int round = 0; round < 20; ++round) {
        std::vector<pid_t> members;
        for (const pid_t pid : ProcessTable::all()) {
            const auto line = ProcessTable::line(pid);
            if (line && sessions.contains(line->session)) {
                members.push_back(pid);
            }
        }
        if (members.empty()) {
            return;
        }
        ProcessTable::kill(members);
    }
}

[[noreturn]] void keep(int messages) {
    ::setsid();
    ::prctl(PR_SET_NAME, "session-keeper");
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        ::signal(signal, SIG_IGN);
    }
    // Whoever reads the test's output waits until nobody can write to it any more; and our own copy
    // of the other end would keep us from seeing the end of the test.
    ::dup2(messages, STDIN_FILENO);
    ::close_range(STDIN_FILENO + 1, ~0U, 0);
    std::set<pid_t> sessions;
    Message message;
    for (;;) {
        const ssize_t got = ::read(STDIN_FILENO, &message, sizeof message);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got != static_cast<ssize_t>(sizeof message)) {
            break;
        }
        if (message.watched) {
            sessions.insert(message.session);
        } else {
            sessions.erase(message.session);
        }
    }
    endAll(sessions);
    ::_exit(0);
}

/// Where the keeper is told; closed by the kernel at the end of the test, whatever that is.
int openKeeper() {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return -1;
    }
    if (::fork() == 0) {
        keep(ends[0]);
    }
    ::close(ends[0]);
    return ends[1];
}

void tell(const Message& message) {
    // A process that forked from a test has a keeper of its own.
    static int keeper = -1;
    static pid_t owner = -1;
    if (std::exchange(owner, ::getpid()) != ::getpid()) {
        keeper = openKeeper();
    }
    [[maybe_unused]] const ssize_t sent = ::write(keeper, &message, sizeof message);
}

}  // namespace

void SessionKeeper::watch(pid_t session) {
    tell({session, true});
}

void SessionKeeper::forget(pid_t session) {
    tell({session, false});
}

}  // namespace velmora::test
