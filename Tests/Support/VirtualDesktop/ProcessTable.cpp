// SPDX-License-Identifier: MIT
#include "Tests/Support/VirtualDesktop/ProcessTable.h"

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace velmora::test {

std::optional<ProcessTable::Line> ProcessTable::line(pid_t pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
    std::string text;
    if (!std::getline(file, text)) {
        return std::nullopt;
    }
    // The name in parentheses may itself hold blanks and parentheses.
    const std::size_t begin = text.find('(');
    const std::size_t end = text.rfind(')');
    if (begin == std::string::npos || end == std::string::npos) {
        return std::nullopt;
    }
    char state = 0;
    int parent = -1;
    int group = -1;
    int session = -1;
    long long user = 0;
    long long system = 0;
    if (std::sscanf(text.c_str() + end + 1, " %c %d %d %d %*d %*d %*u %*u %*u %*u %*u %lld %lld",
                    &state, &parent, &group, &session, &user, &system) != 6 ||
        state == 'Z') {
        return std::nullopt;
    }
    return Line{text.substr(begin + 1, end - begin - 1), parent, session, user + system};
}

long long ProcessTable::bytesRead(pid_t pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/io");
    const std::string key = "read_bytes: ";
    for (std::string text; std::getline(file, text);) {
        if (text.starts_with(key)) {
            return std::stoll(text.substr(key.size()));
        }
    }
    return 0;
}

std::vector<pid_t> ProcessTable::all() {
    std::vector<pid_t> pids;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos) {
            pids.push_back(std::stoi(name));
        }
    }
    return pids;
}

void ProcessTable::kill(const std::vector<pid_t>& pids) {
    constexpr int patience = 2000;  // Milliseconds.
    for (const pid_t pid : pids) {
        ::kill(pid, SIGKILL);
    }
    for (const pid_t pid : pids) {
        const int handle = static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
        pollfd waiting{handle, POLLIN, 0};
        if (handle >= 0) {
            ::poll(&waiting, 1, patience);
            ::close(handle);
        }
        ::waitpid(pid, nullptr, WNOHANG);
    }
}

}  // namespace velmora::test
