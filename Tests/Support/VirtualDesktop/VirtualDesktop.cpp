// SPDX-License-Identifier: MIT
#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <QImage>
#include <QString>
#include <cmath>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "Tests/Support/VirtualDesktop/DesktopConnection.h"

namespace velmora::test {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Environment = ChildProcess::Environment;

constexpr auto startPatience = std::chrono::seconds(30);
constexpr double decoration = 40;  // The greatest that a window manager may add to a side.
constexpr auto glance = std::chrono::milliseconds(25);

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

struct VirtualDesktop::Parts {
    fs::path folder = makeFolder();
    std::string display;
    std::string busAddress;
    std::unique_ptr<ChildProcess> server;
    std::unique_ptr<ChildProcess> bus;
    std::unique_ptr<DesktopConnection> connection;
    std::vector<std::unique_ptr<ChildProcess>> programs;
    std::map<std::string, std::optional<std::string>> replaced;

    ~Parts() {
        programs.clear();
        connection.reset();
        bus.reset();
        if (server) {
            server->end();  // An orderly end removes the server's lock and socket.
        }
        for (const auto& [name, value] : replaced) {
            if (value) {
                setenv(name.c_str(), value->c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
        std::error_code error;
        fs::remove_all(folder, error);
    }

    Environment environment() const {
        return {{"PATH", variable("PATH", "/usr/local/bin:/usr/bin:/bin")},
                {"HOME", (folder / "home").string()},
                {"XDG_CONFIG_HOME", (folder / "home/.config").string()},
                {"XDG_DATA_HOME", (folder / "home/.local/share").string()},
                {"XDG_CACHE_HOME", (folder / "home/.cache").string()},
                {"XDG_STATE_HOME", (folder / "home/.local/state").string()},
                {"XDG_RUNTIME_DIR", (folder / "run").string()},
                {"XDG_SESSION_TYPE", "x11"},
                {"TMPDIR", (folder / "tmp").string()},
                {"DISPLAY", display},
                {"DBUS_SESSION_BUS_ADDRESS", busAddress},
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

    std::unique_ptr<ChildProcess> start(std::vector<std::string> command,
                                        const Environment& extra = {}, int readyFd = -1,
                                        const std::string& output = "log.txt") const {
        Environment variables = environment();
        for (const auto& [name, value] : extra) {
            variables[name] = value;
        }
        return std::make_unique<ChildProcess>(ChildProcess::Options{
            std::move(command), std::move(variables), folder / "home", folder / output, readyFd});
    }

    /// Starts a program that says on a pipe that it is ready; empty where it gave up.
    std::string startAnnounced(std::unique_ptr<ChildProcess>& program,
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

    void startServer(const Options& options) {
        // The first number is VELMORA_TEST_DISPLAY's; the next ones where it is taken.
        const int first = std::stoi(variable("VELMORA_TEST_DISPLAY", "120"));
        for (int number = first; number < first + 20 && display.empty(); ++number) {
            const std::string name = ":" + std::to_string(number);
            const std::string line = startAnnounced(server, [&](int fd) {
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
                display = name;
            }
        }
        if (display.empty()) {
            throw std::runtime_error("Xvfb does not start");
        }
        connection = std::make_unique<DesktopConnection>(display);
    }

    void startBus() {
        linkServices(folder / "services");
        std::ofstream(folder / "bus.conf")
            << "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
               "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
               "<busconfig><type>session</type><keep_umask/><listen>unix:path="
            << (folder / "run/bus").string() << "</listen><auth>EXTERNAL</auth><servicedir>"
            << (folder / "services").string()
            << "</servicedir><policy context=\"default\"><allow send_destination=\"*\" "
               "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/></policy>"
               "</busconfig>\n";
        busAddress = startAnnounced(bus, [this](int fd) {
            return std::vector<std::string>{"dbus-daemon", "--nofork", "--nopidfile",
                                            "--config-file=" + (folder / "bus.conf").string(),
                                            "--print-address=" + std::to_string(fd)};
        });
        if (busAddress.empty()) {
            throw std::runtime_error("the session bus does not start");
        }
    }

    std::string run(std::vector<std::string> command) const {
        const std::string name = command.front();
        fs::remove(folder / "output.txt");
        const auto program = start(std::move(command), {}, -1, "output.txt");
        const std::optional<int> status = program->waitForExit(patience);
        std::ostringstream text;
        text << std::ifstream(folder / "output.txt").rdbuf();
        if (status != 0) {
            throw std::runtime_error(name + " failed: " + text.str());
        }
        return text.str();
    }
};

VirtualDesktop::VirtualDesktop() : VirtualDesktop(Options{}) {}

VirtualDesktop::VirtualDesktop(const Options& options) : parts_(std::make_unique<Parts>()) {
    for (const char* name :
         {"home/.config", "home/.local/share", "home/.local/state", "home/.cache", "run", "tmp"}) {
        fs::create_directories(parts_->folder / name);
    }
    fs::permissions(parts_->folder / "run", fs::perms::owner_all);
    parts_->startServer(options);
    parts_->startBus();
    if (options.windowManager) {
        parts_->programs.push_back(parts_->start({"openbox"}));
        if (!waitUntil([this] { return parts_->connection->windowManagerIsThere(); })) {
            throw std::runtime_error("openbox does not start");
        }
    }
    if (options.accessibility) {
        parts_->run({"dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus",
                     "/org/a11y/bus", "org.a11y.Bus.GetAddress"});
        parts_->run({"dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus",
                     "/org/a11y/bus", "org.freedesktop.DBus.Properties.Set",
                     "string:org.a11y.Status", "string:IsEnabled", "variant:boolean:true"});
    }
}

VirtualDesktop::~VirtualDesktop() = default;

const std::string& VirtualDesktop::display() const {
    return parts_->display;
}

const std::string& VirtualDesktop::sessionBusAddress() const {
    return parts_->busAddress;
}

const std::filesystem::path& VirtualDesktop::folder() const {
    return parts_->folder;
}

ChildProcess::Environment VirtualDesktop::environment() const {
    return parts_->environment();
}

void VirtualDesktop::enter() {
    for (const auto& [name, value] : parts_->environment()) {
        const char* before = getenv(name.c_str());
        parts_->replaced.try_emplace(
            name, before == nullptr ? std::nullopt : std::optional<std::string>(before));
        setenv(name.c_str(), value.c_str(), 1);
    }
}

ChildProcess& VirtualDesktop::launch(std::vector<std::string> command,
                                     const ChildProcess::Environment& extraEnvironment) {
    parts_->programs.push_back(parts_->start(std::move(command), extraEnvironment));
    return *parts_->programs.back();
}

void VirtualDesktop::stop(ChildProcess& program) {
    std::erase_if(parts_->programs, [&](const auto& held) { return held.get() == &program; });
}

std::string VirtualDesktop::run(std::vector<std::string> command) {
    return parts_->run(std::move(command));
}

std::string VirtualDesktop::log() const {
    std::ostringstream text;
    text << std::ifstream(parts_->folder / "log.txt").rdbuf();
    return text.str();
}

std::filesystem::path VirtualDesktop::writeFile(const std::string& name,
                                                const std::string& content) const {
    fs::path file = parts_->folder / "home" / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file;
}

std::vector<VirtualDesktop::Window> VirtualDesktop::windows() const {
    return parts_->connection->windows();
}

bool VirtualDesktop::waitUntil(const std::function<bool()>& condition, Milliseconds timeout) {
    const auto deadline = Clock::now() + timeout;
    while (!condition()) {
        if (Clock::now() >= deadline) {
            return false;
        }
        parts_->connection->awaitEvent(glance);
    }
    return true;
}

VirtualDesktop::Window VirtualDesktop::waitForWindow(
    const std::function<bool(const Window&)>& wanted, Milliseconds timeout) {
    std::optional<Window> found;
    const bool seen = waitUntil(
        [&] {
            for (const Window& window : windows()) {
                if (wanted(window)) {
                    found = window;
                }
            }
            return found.has_value();
        },
        timeout);
    if (!seen) {
        throw std::runtime_error("the window did not appear; the programs wrote: " + log());
    }
    return *found;
}

VirtualDesktop::Window VirtualDesktop::waitForWindowOf(const ChildProcess& program,
                                                       Milliseconds timeout) {
    return waitForWindow(
        [&](const Window& window) {
            return window.processId > 0 && window.client.width > 40 && window.client.height > 20 &&
                   program.owns(window.processId);
        },
        timeout);
}

void VirtualDesktop::placeWindow(std::uint64_t window, const Rect& client) {
    // A window manager ignores what it is told of a window before it manages it.
    std::optional<Clock::time_point> asked;
    std::string where = "no place";
    const bool placed = waitUntil([&] {
        if (!asked || Clock::now() - *asked > std::chrono::milliseconds(500)) {
            parts_->connection->placeWindow(window, client);
            asked = Clock::now();
        }
        for (const Window& each : windows()) {
            if (each.id == window) {
                where = std::to_string(each.client.x) + ", " + std::to_string(each.client.y);
                return std::abs(each.client.x - client.x) <= decoration &&
                       std::abs(each.client.y - client.y) <= decoration;
            }
        }
        return false;
    });
    if (!placed) {
        throw std::runtime_error("the window does not move to its place; it stands at " + where);
    }
}

void VirtualDesktop::raiseWindow(std::uint64_t window) {
    parts_->connection->raiseWindow(window);
}

std::uint64_t VirtualDesktop::focusedWindow() const {
    return parts_->connection->focusedWindow();
}

void VirtualDesktop::movePointer(int x, int y) {
    parts_->connection->movePointer(x, y);
}

void VirtualDesktop::movePointerBy(int dx, int dy) {
    parts_->connection->movePointerBy(dx, dy);
}

void VirtualDesktop::pressButton(unsigned button) {
    parts_->connection->button(button, true);
}

void VirtualDesktop::releaseButton(unsigned button) {
    parts_->connection->button(button, false);
}

void VirtualDesktop::click(int x, int y, unsigned button) {
    movePointer(x, y);
    pressButton(button);
    releaseButton(button);
}

void VirtualDesktop::pressKey(const std::string& keysym) {
    parts_->connection->key(keysym, true);
}

void VirtualDesktop::releaseKey(const std::string& keysym) {
    parts_->connection->key(keysym, false);
}

void VirtualDesktop::typeKey(const std::string& keysym) {
    pressKey(keysym);
    releaseKey(keysym);
}

Image VirtualDesktop::screenshot() const {
    return screenshot({0, 0, 100000, 100000});
}

Image VirtualDesktop::screenshot(const Rect& area) const {
    return parts_->connection->capture(area);
}

Image VirtualDesktop::settledScreenshot(const Rect& area, Milliseconds timeout) {
    const auto same = [](const Image& a, const Image& b) {
        if (a.width() != b.width() || a.height() != b.height()) {
            return false;
        }
        for (int y = 0; y < a.height(); ++y) {
            if (!std::equal(a.row(y), a.row(y) + a.width(), b.row(y))) {
                return false;
            }
        }
        return true;
    };
    Image last = screenshot(area);
    auto since = Clock::now();
    waitUntil(
        [&] {
            Image next = screenshot(area);
            if (!same(last, next)) {
                last = std::move(next);
                since = Clock::now();
            }
            return Clock::now() - since > std::chrono::milliseconds(200);
        },
        timeout);
    return last;
}

void VirtualDesktop::savePng(const Image& image, const std::filesystem::path& file) {
    QImage copy(image.width(), image.height(), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        std::copy(image.row(y), image.row(y) + image.width(),
                  reinterpret_cast<std::uint32_t*>(copy.scanLine(y)));
    }
    copy.save(QString::fromStdString(file.string()), "PNG");
}

}  // namespace velmora::test
