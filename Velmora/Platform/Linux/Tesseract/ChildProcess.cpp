// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace velmora {

namespace {

constexpr int socketInChild = 3;

/// The environment with some settings replaced.
std::vector<std::string> environmentWith(const std::vector<std::string>& settings) {
    std::vector<std::string> result = settings;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string setting = *entry;
        const std::string name = setting.substr(0, setting.find('=') + 1);
        bool replaced = false;
        for (const std::string& own : settings) {
            replaced = replaced || own.compare(0, name.size(), name) == 0;
        }
        if (!replaced) {
            result.push_back(setting);
        }
    }
    return result;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// Signals as a fresh program expects them, whatever this program has blocked or ignored.
void setDefaultSignals(posix_spawnattr_t& attributes) {
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

}  // namespace

std::unique_ptr<ChildProcess> ChildProcess::start(const std::string& program,
                                                  const std::vector<std::string>& arguments,
                                                  const std::vector<std::string>& environment) {
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return nullptr;
    }
    // Duplicating onto itself would keep close-on-exec, so that the child's end must not be 3 yet.
    int childEnd = ends[1];
    if (childEnd == socketInChild) {
        childEnd = ::fcntl(ends[1], F_DUPFD_CLOEXEC, socketInChild + 1);
        ::close(ends[1]);
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, childEnd, socketInChild);
    posix_spawn_file_actions_addclosefrom_np(&actions, socketInChild + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    setDefaultSignals(attributes);

    std::vector<std::string> argumentTexts = arguments;
    std::vector<std::string> environmentTexts = environmentWith(environment);
    const std::vector<char*> argv = pointersTo(argumentTexts);
    const std::vector<char*> envp = pointersTo(environmentTexts);
    pid_t id = -1;
    const int error =
        ::posix_spawn(&id, program.c_str(), &actions, &attributes, argv.data(), envp.data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    ::close(childEnd);
    if (error != 0) {
        ::close(ends[0]);
        return nullptr;
    }
    return std::unique_ptr<ChildProcess>(new ChildProcess(id, ends[0]));
}

ChildProcess::~ChildProcess() {
    ::close(socket_);
    ::kill(id_, SIGKILL);
    while (::waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

}  // namespace velmora
