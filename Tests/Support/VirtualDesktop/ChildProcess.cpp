// SPDX-License-Identifier: MIT
#include "Tests/Support/VirtualDesktop/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "Tests/Support/VirtualDesktop/ProcessTable.h"
#include "Tests/Support/VirtualDesktop/SessionKeeper.h"

namespace velmora::test {

namespace {

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

std::optional<int> statusOf(int raw) {
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
}

}  // namespace

ChildProcess::ChildProcess(const Options& options) {
    if (options.command.empty()) {
        throw std::runtime_error("no program given");
    }
    std::vector<std::string> arguments = options.command;
    std::vector<std::string> variables;
    for (const auto& [name, value] : options.environment) {
        variables.push_back(name + "=" + value);
    }
    std::vector<char*> argumentPointers = pointers(arguments);
    std::vector<char*> variablePointers = pointers(variables);
    // Programs that outlive the one that started them come to this process and are found there.
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    int report[2];
    if (pipe2(report, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    pid_ = fork();
    if (pid_ == 0) {
        setsid();
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int input = open("/dev/null", O_RDONLY);
        dup2(input, STDIN_FILENO);
        const std::string output =
            options.outputFile.empty() ? "/dev/null" : options.outputFile.string();
        const int log = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        dup2(log, STDOUT_FILENO);
        dup2(log, STDERR_FILENO);
        if (options.readyFd >= 0) {
            fcntl(options.readyFd, F_SETFD, 0);
        }
        if (!options.workingFolder.empty() && chdir(options.workingFolder.c_str()) != 0) {
            _exit(127);
        }
        execvpe(argumentPointers[0], argumentPointers.data(), variablePointers.data());
        const int code = errno;
        [[maybe_unused]] const ssize_t sent = write(report[1], &code, sizeof code);
        _exit(127);
    }
    close(report[1]);
    if (pid_ > 0) {
        SessionKeeper::watch(pid_);
    }
    int code = 0;
    const ssize_t got = pid_ < 0 ? 0 : read(report[0], &code, sizeof code);
    close(report[0]);
    if (pid_ < 0 || got > 0) {
        kill();
        throw std::runtime_error("cannot start " + options.command.front() + ": " +
                                 std::strerror(code));
    }
}

ChildProcess::~ChildProcess() {
    kill();
}

bool ChildProcess::owns(pid_t pid) const {
    for (int depth = 0; pid > 1 && depth < 64; ++depth) {
        if (pid == pid_) {
            return true;
        }
        const auto line = ProcessTable::line(pid);
        if (!line) {
            return false;
        }
        if (line->session == pid_) {
            return true;
        }
        pid = line->parent;
    }
    return false;
}

bool ChildProcess::isRunning() {
    return !waitForExit(std::chrono::milliseconds(0)).has_value();
}

std::optional<int> ChildProcess::waitForExit(std::chrono::milliseconds timeout) {
    if (exitStatus_ || pid_ < 0) {
        return exitStatus_;
    }
    const int handle = static_cast<int>(syscall(SYS_pidfd_open, pid_, 0));
    pollfd waiting{handle, POLLIN, 0};
    if (handle >= 0) {
        poll(&waiting, 1, static_cast<int>(timeout.count()));
        close(handle);
    }
    int raw = 0;
    if (waitpid(pid_, &raw, WNOHANG) == pid_) {
        exitStatus_ = statusOf(raw);
    }
    return exitStatus_;
}

std::vector<pid_t> ChildProcess::members() const {
    std::vector<pid_t> result;
    for (const pid_t pid : ProcessTable::all()) {
        if (owns(pid)) {
            result.push_back(pid);
        }
    }
    return result;
}

void ChildProcess::signalAll(int signal) const {
    for (const pid_t pid : members()) {
        ::kill(pid, signal);
    }
}

std::chrono::milliseconds ChildProcess::processorTime() const {
    long long ticks = 0;
    for (const pid_t pid : members()) {
        ticks += ProcessTable::line(pid).value_or(ProcessTable::Line{}).ticks;
    }
    return std::chrono::milliseconds(ticks * 1000 / sysconf(_SC_CLK_TCK));
}

long long ChildProcess::bytesRead() const {
    long long bytes = 0;
    for (const pid_t pid : members()) {
        bytes += ProcessTable::bytesRead(pid);
    }
    return bytes;
}

void ChildProcess::end() {
    if (pid_ > 0 && !exitStatus_) {
        ::kill(pid_, SIGTERM);
        waitForExit(std::chrono::seconds(5));
    }
    kill();
}

void ChildProcess::kill() {
    if (pid_ < 0) {
        return;
    }
    // A member may start another one between the listing and the signal, hence the rounds.
    for (std::vector<pid_t> left = members(); !left.empty(); left = members()) {
        // Its status is wanted.
        std::erase(left, pid_);
        ProcessTable::kill(left);
        if (!exitStatus_) {
            ::kill(pid_, SIGKILL);
            waitForExit(std::chrono::seconds(2));
        }
    }
    int raw = 0;
    if (!exitStatus_ && waitpid(pid_, &raw, 0) == pid_) {
        exitStatus_ = statusOf(raw);
    }
    SessionKeeper::forget(pid_);
}

}  // namespace velmora::test
