// SPDX-License-Identifier: MIT
// A home of its own for every test program, and for what it starts: nothing that runs in a test
// reads or writes the folders of whoever runs it, wakes services of theirs, or finds their bus.
// Linked into a program, it acts before the program's first line.
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

class PrivateHome {
  public:
    PrivateHome() {
        std::error_code error;
        std::string name = (fs::temp_directory_path(error) / "velmora-home-XXXXXX").string();
        if (error || mkdtemp(name.data()) == nullptr) {
            std::abort();  // Rather than with somebody's own folders.
        }
        folder_ = name;
        use("HOME", ".");
        use("XDG_CONFIG_HOME", ".config");
        use("XDG_DATA_HOME", ".local/share");
        use("XDG_STATE_HOME", ".local/state");
        use("XDG_CACHE_HOME", ".cache");
        use("XDG_RUNTIME_DIR", "run");
        // Tests that want a bus start one. Without an address programs look for one themselves.
        setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + name + "/no-bus").c_str(), 1);
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        unsetenv("SPEECHD_ADDRESS");
    }
    PrivateHome(const PrivateHome&) = delete;
    PrivateHome& operator=(const PrivateHome&) = delete;
    ~PrivateHome() {
        if (getpid() == owner_) {
            std::error_code ignored;
            fs::remove_all(folder_, ignored);
        }
    }

  private:
    void use(const char* variable, const char* name) const {
        const fs::path path = (folder_ / name).lexically_normal();
        fs::create_directories(path);
        fs::permissions(path, fs::perms::owner_all);
        setenv(variable, path.c_str(), 1);
    }

    pid_t owner_ = getpid();
    fs::path folder_;
};

const PrivateHome home;

}  // namespace
}  // namespace velmora::test
