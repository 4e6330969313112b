// SPDX-License-Identifier: MIT
#include "Tests/Support/VirtualDesktop/DesktopServices.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace velmora::test {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Environment = ChildProcess::Environment;

constexpr auto startPatience = std::chrono::seconds(30);

fs::path makeFolder() {
    std::string name = (fs::temp_directory_path() / "velmora-desktop-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("cannot make a temporary folder");
    }
    return name;
}

std::string variable(const char* name, const std::string& fallback) {
    const char* value = getenv(name);
    return value == nullptr || *value == '\0' ? fallback : value;
}

/// Reads one line that a starting program writes to a pipe; empty if it ends without.
std::string readLine(int fd, ChildProcess& writer) {
    std::string line;
    const auto deadline = Clock::now() + startPatience;
    while (Clock::now() < deadline) {
        pollfd waiting{fd, POLLIN, 0};
        if (poll(&waiting, 1, 50) > 0) {
            char letter = 0;
            if (read(fd, &letter, 1) != 1) {
                break;
            }
            if (letter == '\n') {
                return line;
            }
            line += letter;
        } else if (!writer.isRunning()) {
            break;
        }
    }
    return {};
}

/// The services that programs may have started for them on the private session bus. The machine's
/// others (portals, file system services) would reach out of the desktop and are not there.
void linkServices(const fs::path& folder) {
    fs::create_directories(folder);
    for (const char* name : {"org.a11y.Bus.service", "org.xfce.Xfconf.service"}) {
        const fs::path installed = fs::path("/usr/share/dbus-1/services") / name;
        if (fs::exists(installed)) {
            fs::create_symlink(installed, folder / name);
        }
    }
}

}  // namespace

DesktopServices::DesktopServices(const VirtualDesktop::Options& options) : folder_(makeFolder()) {
    for (const char* name :
         {"home/.config", "home/.local/share", "home/.local/state", "home/.cache", "run", "tmp"}) {
        fs::create_directories(folder_ / name);
    }
    fs::permissions(folder_ / "run", fs::perms::owner_all);
    startServer(options);
    startBus();
}

DesktopServices::~DesktopServices() {
    bus_.reset();
    if (server_) {
        server_->end();  // An orderly end removes the server's lock and socket.
    }
    std::error_code error;
    fs::remove_all(folder_, error);
}

Environment DesktopServices::environment() const {
    return {{"PATH", variable("PATH", "/usr/local/bin:/usr/bin:/bin")},
            {"HOME", (folder_ / "home").string()},
            {"XDG_CONFIG_HOME", (folder_ / "home/.config").string()},
            {"XDG_DATA_HOME", (folder_ / "home/.local/share").string()},
            {"XDG_CACHE_HOME", (folder_ / "home/.cache").string()},
            {"XDG_STATE_HOME", (folder_ / "home/.local/state").string()},
            {"XDG_RUNTIME_DIR", (folder_ / "run").string()},
            {"XDG_SESSION_TYPE", "x11"},
            {"TMPDIR", (folder_ / "tmp").string()},
            {"DISPLAY", display_},
            {"DBUS_SESSION_BUS_ADDRESS", busAddress_},
            {"LANG", "C.UTF-8"},
            {"SHELL", "/bin/sh"},
            {"USER", "velmora"},
            {"GSETTINGS_BACKEND", "memory"},
            {"GTK_USE_PORTAL", "0"},
            {"GTK_OVERLAY_SCROLLING", "0"},
            {"GIO_USE_VFS", "local"},
            {"GDK_BACKEND", "x11"},
            {"QT_QPA_PLATFORM", "xcb"},
            {"LIBGL_ALWAYS_SOFTWARE", "1"},
            {"OMP_THREAD_LIMIT", "1"}};
}

std::unique_ptr<ChildProcess> DesktopServices::start(std::vector<std::string> command,
                                                     const Environment& extra, int readyFd,
                                                     const std::string& output) const {
    Environment variables = environment();
    for (const auto& [name, value] : extra) {
        variables[name] = value;
    }
    return std::make_unique<ChildProcess>(ChildProcess::Options{
        std::move(command), std::move(variables), folder_ / "home", folder_ / output, readyFd});
}

std::string DesktopServices::startAnnounced(
    std::unique_ptr<ChildProcess>& program,
    std::function<std::vector<std::string>(int)> command) const {
    int ready[2];
    if (pipe2(ready, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    program = start(command(ready[1]), {}, ready[1]);
    close(ready[1]);
    std::string line = readLine(ready[0], *program);
    close(ready[0]);
    return line;
}

void DesktopServices::startServer(const VirtualDesktop::Options& options) {
    // The first number is VELMORA_TEST_DISPLAY's; the next ones where it is taken.
    const int first = std::stoi(variable("VELMORA_TEST_DISPLAY", "120"));
    for (int number = first; number < first + 20 && display_.empty(); ++number) {
        const std::string name = ":" + std::to_string(number);
        const std::string line = startAnnounced(server_, [&](int fd) {
            std::vector<std::string> command{
                "Xvfb",
                name,
                "-displayfd",
                std::to_string(fd),
                "-noreset",
                "-nolisten",
                "tcp",
                "-screen",
                "0",
                std::to_string(options.width) + "x" + std::to_string(options.height) + "x24",
                "+extension",
                "XTEST"};
            command.insert(command.end(), options.serverArguments.begin(),
                           options.serverArguments.end());
            return command;
        });
        if (!line.empty()) {
            display_ = name;
        }
    }
    if (display_.empty()) {
        throw std::runtime_error("Xvfb does not start");
    }
}

void DesktopServices::startBus() {
    linkServices(folder_ / "services");
    std::ofstream(folder_ / "bus.conf")
        << "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
           "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
           "<busconfig><type>session</type><keep_umask/><listen>unix:path="
        << (folder_ / "run/bus").string() << "</listen><auth>EXTERNAL</auth><servicedir>"
        << (folder_ / "services").string()
        << "</servicedir><policy context=\"default\"><allow send_destination=\"*\" "
           "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/></policy>"
           "</busconfig>\n";
    busAddress_ = startAnnounced(bus_, [this](int fd) {
        return std::vector<std::string>{"dbus-daemon", "--nofork", "--nopidfile",
                                        "--config-file=" + (folder_ / "bus.conf").string(),
                                        "--print-address=" + std::to_string(fd)};
    });
    if (busAddress_.empty()) {
        throw std::runtime_error("the session bus does not start");
    }
}

std::string DesktopServices::run(std::vector<std::string> command) const {
    const std::string name = command.front();
    fs::remove(folder_ / "output.txt");
    const auto program = start(std::move(command), {}, -1, "output.txt");
    const std::optional<int> status = program->waitForExit(VirtualDesktop::patience);
    std::ostringstream text;
    text << std::ifstream(folder_ / "output.txt").rdbuf();
    if (status != 0) {
        throw std::runtime_error(name + " failed: " + text.str());
    }
    return text.str();
}

}  // namespace velmora::test
