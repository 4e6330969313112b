// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/SingleInstanceGuard.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace velmora {

SingleInstanceGuard::SingleInstanceGuard(std::optional<std::filesystem::path> dataFolder)
    : dataFolder_(std::move(dataFolder)) {}

SingleInstanceGuard::~SingleInstanceGuard() {
    if (lockFileDescriptor_ >= 0) {
        ::flock(lockFileDescriptor_, LOCK_UN);
        ::close(lockFileDescriptor_);
    }
}

std::optional<std::filesystem::path> SingleInstanceGuard::lockFilePath() const {
    if (!dataFolder_ || dataFolder_->empty()) {
        return std::nullopt;
    }
    const std::filesystem::path folder = *dataFolder_ / "Velmora";
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error || !std::filesystem::is_directory(folder, error)) {
        return std::nullopt;
    }
    return folder / "velmora.lock";
}

bool SingleInstanceGuard::acquire() {
    if (lockFileDescriptor_ >= 0) {
        return true;
    }
    const auto path = lockFilePath();
    if (!path) {
        return false;
    }
    // Close on exec: a child that outlives this process must not keep the lock. Without blocking:
    // whatever else lies under that name must not hold the start up.
    const int descriptor =
        ::open(path->c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        return false;
    }
    int locked = -1;
    do {
        locked = ::flock(descriptor, LOCK_EX | LOCK_NB);
    } while (locked != 0 && errno == EINTR);
    if (locked != 0) {
        ::close(descriptor);
        return false;
    }
    lockFileDescriptor_ = descriptor;
    return true;
}

}  // namespace velmora
