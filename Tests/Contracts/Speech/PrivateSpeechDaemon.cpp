// SPDX-License-Identifier: MIT
#include "Tests/Contracts/Speech/PrivateSpeechDaemon.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "Tests/Support/VirtualDesktop/ProcessTable.h"

namespace velmora::test {
namespace {

constexpr auto startDeadline = std::chrono::seconds(20);

void writeFile(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

bool accepts(const std::filesystem::path& socketPath) {
    const int socketHandle = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    socketPath.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const bool connected =
        ::connect(socketHandle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socketHandle);
    return connected;
}

/// Daemons and modules whose starter is gone, so that they are ours now.
std::vector<pid_t> adopted() {
    std::vector<pid_t> result;
    for (const pid_t pid : ProcessTable::all()) {
        const auto line = ProcessTable::line(pid);
        if (line && line->parent == ::getpid() &&
            (line->name.starts_with("speech-dispatch") || line->name.starts_with("sd_"))) {
            result.push_back(pid);
        }
    }
    return result;
}

}  // namespace

PrivateSpeechDaemon::PrivateSpeechDaemon(const std::string& moduleName) : moduleName_(moduleName) {
    std::string pattern = (std::filesystem::temp_directory_path() / "velmora-speech-XXXXXX");
    folder_ = ::mkdtemp(pattern.data());
    const std::string fifoPath = folder_ / "spoken";
    ::mkfifo(fifoPath.c_str(), 0600);
    fifo_ = ::open(fifoPath.c_str(), O_RDWR | O_CLOEXEC);
    writeFile(folder_ / "conf/speechd.conf", "Timeout 0\nLogLevel 5\nLogDir \"" + folder_.string() +
                                                 "\"\nAudioOutputMethod \"libao\"\nDefaultModule " +
                                                 moduleName_ + "\nAddModule \"" + moduleName_ +
                                                 "\" \"sd_generic\" \"recorder.conf\"\n");
    // The daemon wants a sound device before it loads a module: one that swallows everything.
    writeFile(folder_ / ".libao", "default_driver=null\n");
    std::filesystem::create_directories(folder_ / "log");
    const std::string recorder = folder_ / "recorder";
    writeFile(recorder, "#!/bin/sh\nprintf '%s|%s|%s\\n' \"$(cat)\" \"$1\" \"$2\" > " + fifoPath +
                            "\nexec sleep 600\n");
    std::filesystem::permissions(recorder, std::filesystem::perms::owner_all);
    writeFile(folder_ / "conf/modules/recorder.conf",
              "GenericExecuteSynth \\\n\"printf %s \\'$DATA\\' | " + recorder +
                  " \\'$VOICE\\' \\'$RATE\\'\"\n"
                  "GenericRateAdd 0\nGenericRateMultiply 100\nGenericRateForceInteger 1\n"
                  "GenericMaxChunkLength 300\nGenericDelimiters \".\"\n"
                  "AddVoice \"cmn-latn-pinyin\" \"MALE1\" \"pinyin-aware\"\n"
                  "AddVoice \"zh-cn\" \"MALE1\" \"mandarin\"\n"
                  "GenericLanguage \"cmn-latn-pinyin\" \"cmn\" \"utf-8\"\n"
                  "GenericLanguage \"zh-cn\" \"zh\" \"utf-8\"\n"
                  "AddVoice \"en\" \"MALE1\" \"english\"\n"
                  "DefaultVoice \"english\"\n");
    ::setenv("SPEECHD_ADDRESS", ("unix_socket:" + (folder_ / "socket").string()).c_str(), 1);
    start();
}

PrivateSpeechDaemon::~PrivateSpeechDaemon() {
    kill();
    ::close(fifo_);
    ::unsetenv("SPEECHD_ADDRESS");
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void PrivateSpeechDaemon::start() {
    std::filesystem::remove(folder_ / "socket");
    std::filesystem::remove(folder_ / "pid");
    const char* const path = std::getenv("PATH");
    daemon_ = std::make_unique<ChildProcess>(ChildProcess::Options{
        {"speech-dispatcher", "-s", "-c", "unix_socket", "-S", folder_ / "socket", "-C",
         folder_ / "conf", "-P", folder_ / "pid", "-L", folder_ / "log"},
        {{"PATH", path != nullptr ? path : "/usr/bin:/bin"},
         {"HOME", folder_.string()},
         {"XDG_RUNTIME_DIR", folder_.string()},
         {"LC_ALL", "C.UTF-8"}},
        folder_,
        folder_ / "daemon.log",
        -1});
    const auto deadline = std::chrono::steady_clock::now() + startDeadline;
    while (!accepts(folder_ / "socket")) {
        if (std::chrono::steady_clock::now() > deadline || !daemon_->isRunning()) {
            throw std::runtime_error("speech-dispatcher did not start");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

void PrivateSpeechDaemon::kill() {
    if (daemon_) {
        daemon_->kill();
        daemon_.reset();
    }
    // A client that finds no daemon starts one, which leaves its starter and comes to us.
    for (std::vector<pid_t> strays = adopted(); !strays.empty(); strays = adopted()) {
        ProcessTable::kill(strays);
    }
}

void PrivateSpeechDaemon::restart() {
    kill();
    start();
}

std::optional<PrivateSpeechDaemon::Spoken> PrivateSpeechDaemon::nextSpoken(
    std::chrono::milliseconds deadline) const {
    std::string line;
    pollfd waited{fifo_, POLLIN, 0};
    while (::poll(&waited, 1, static_cast<int>(deadline.count())) > 0) {
        char byte = 0;
        if (::read(fifo_, &byte, 1) != 1) {
            return std::nullopt;
        }
        if (byte != '\n') {
            line.push_back(byte);
            continue;
        }
        const auto first = line.find('|');
        const auto second = line.find('|', first + 1);
        return Spoken{line.substr(0, first), line.substr(first + 1, second - first - 1),
                      line.substr(second + 1)};
    }
    return std::nullopt;
}

}  // namespace velmora::test
