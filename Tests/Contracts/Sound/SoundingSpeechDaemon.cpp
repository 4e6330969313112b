// SPDX-License-Identifier: MIT
#include "Tests/Contracts/Sound/SoundingSpeechDaemon.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

namespace velmora::test {
namespace {

using Samples = SoundingSpeechDaemon::Samples;

constexpr auto patience = std::chrono::seconds(30);
constexpr int loud = 300;  // Of 32767: no noise comes near it.

bool isLoud(std::int16_t sample) {
    return std::abs(static_cast<int>(sample)) > loud;
}

Samples samplesOf(const std::string& bytes, std::size_t from) {
    Samples samples((bytes.size() - std::min(bytes.size(), from)) / sizeof(std::int16_t));
    std::memcpy(samples.data(), bytes.data() + std::min(bytes.size(), from),
                samples.size() * sizeof(std::int16_t));
    return samples;
}

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Whether somebody listens there: a server's socket has its name before it listens.
bool isListening(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::memcpy(address.sun_path, path.data(), path.size());
    const int connection = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isReached =
        ::connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(connection);
    return isReached;
}

/// What sounds, without the silence around it and in it. A busy machine does not always feed its
/// sound server in time, and what it owes is silence of any length between two samples.
Samples withoutSilence(const Samples& samples) {
    constexpr std::size_t shortestGap = SoundingSpeechDaemon::rate / 100;
    Samples sound;
    std::size_t silent = 0;
    for (const std::int16_t sample : samples) {
        sound.push_back(sample);
        silent = isLoud(sample) ? 0 : silent + 1;
        if (silent == shortestGap) {
            sound.resize(sound.size() - silent);
        } else if (silent > shortestGap) {
            sound.pop_back();
        }
    }
    if (silent < shortestGap) {
        sound.resize(sound.size() - silent);
    }
    return sound;
}

}  // namespace

SoundingSpeechDaemon::SoundingSpeechDaemon() {
    std::string pattern = (std::filesystem::temp_directory_path() / "velmora-sound-XXXXXX");
    folder_ = ::mkdtemp(pattern.data());
    std::filesystem::create_directories(folder_ / "conf/modules");
    std::filesystem::create_directories(folder_ / "log");
    std::ofstream(folder_ / "conf/modules/espeak-ng.conf");
    std::ofstream(folder_ / "conf/speechd.conf")
        << "Timeout 0\nLogLevel 3\nLogDir \"" << inFolder("log")
        << "\"\nAudioOutputMethod \"pulse\"\nDefaultModule espeak-ng\n"
           "AddModule \"espeak-ng\" \"sd_espeak-ng\" \"espeak-ng.conf\"\n";
    const std::string socket = inFolder("sound");
    soundServer_ = launch(
        {"pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "-L",
         "module-null-sink sink_name=out rate=" + std::to_string(rate) + " channels=1 format=s16le",
         "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + socket},
        "sound-server.log");
    if (!waitUntil([&] { return isListening(socket); })) {
        throw std::runtime_error("pulseaudio does not start: " +
                                 contentOf(folder_ / "sound-server.log"));
    }
    recorder_ = launch({"parec", "-d", "out.monitor", "--raw", "--format=s16le",
                        "--rate=" + std::to_string(rate), "--channels=1", "--latency-msec=20"},
                       "heard");
    if (!waitUntil([&] { return !heard().empty(); })) {
        throw std::runtime_error("nothing can be recorded");
    }
    ::setenv("SPEECHD_ADDRESS", ("unix_socket:" + inFolder("socket")).c_str(), 1);
    start();
}

SoundingSpeechDaemon::~SoundingSpeechDaemon() {
    ::unsetenv("SPEECHD_ADDRESS");
    daemon_.reset();
    recorder_.reset();
    soundServer_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::unique_ptr<ChildProcess> SoundingSpeechDaemon::launch(std::vector<std::string> command,
                                                           const char* output) const {
    const char* const path = std::getenv("PATH");
    return std::make_unique<ChildProcess>(
        ChildProcess::Options{std::move(command),
                              {{"PATH", path != nullptr ? path : "/usr/bin:/bin"},
                               {"HOME", folder_.string()},
                               {"XDG_RUNTIME_DIR", folder_.string()},
                               {"LC_ALL", "C.UTF-8"},
                               {"PULSE_SERVER", "unix:" + inFolder("sound")}},
                              folder_,
                              folder_ / output,
                              -1});
}

bool SoundingSpeechDaemon::waitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

void SoundingSpeechDaemon::start() {
    std::filesystem::remove(folder_ / "socket");
    std::filesystem::remove(folder_ / "pid");
    daemon_ = launch({"speech-dispatcher", "-s", "-c", "unix_socket", "-S", inFolder("socket"),
                      "-C", inFolder("conf"), "-P", inFolder("pid"), "-L", inFolder("log")},
                     "daemon.log");
    if (!waitUntil([&] { return isListening(inFolder("socket")); })) {
        throw std::runtime_error("speech-dispatcher does not start: " +
                                 contentOf(folder_ / "daemon.log"));
    }
}

void SoundingSpeechDaemon::kill() {
    daemon_->kill();
    daemon_.reset();
}

std::string SoundingSpeechDaemon::account() const {
    return contentOf(folder_ / "daemon.log") + contentOf(folder_ / "log/speech-dispatcher.log") +
           contentOf(folder_ / "log/espeak-ng.log") + contentOf(folder_ / "sound-server.log");
}

Samples SoundingSpeechDaemon::heard() const {
    return samplesOf(contentOf(folder_ / "heard"), 0);
}

bool SoundingSpeechDaemon::isHeard(std::size_t after) const {
    return waitUntil([&] {
        const Samples all = heard();
        return after < all.size() &&
               std::any_of(all.begin() + static_cast<std::ptrdiff_t>(after), all.end(), isLoud);
    });
}

Samples SoundingSpeechDaemon::nextSound(std::size_t after,
                                        std::chrono::milliseconds silence) const {
    if (!isHeard(after)) {
        return {};
    }
    const auto quiet = static_cast<std::ptrdiff_t>(silence.count()) * rate / 1000;
    Samples all;
    waitUntil([&] {
        all = heard();
        return std::find_if(all.rbegin(), all.rend(), isLoud) - all.rbegin() > quiet;
    });
    all.erase(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(after));
    return withoutSilence(all);
}

Samples SoundingSpeechDaemon::rendered(const std::string& text, const std::string& voice,
                                       int wordsPerMinute) const {
    constexpr std::size_t headerOfWave = 44;
    std::filesystem::remove(folder_ / "rendered.wav");
    launch({"espeak-ng", "-v", voice, "-s", std::to_string(wordsPerMinute), "--stdout", text},
           "rendered.wav")
        ->waitForExit(patience);
    return withoutSilence(samplesOf(contentOf(folder_ / "rendered.wav"), headerOfWave));
}

}  // namespace velmora::test
