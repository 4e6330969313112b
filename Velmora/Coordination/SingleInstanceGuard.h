// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>

namespace velmora {

/// Keeps a second copy of the program from running: an advisory lock on a file of the user's data
/// folder. The kernel drops the lock when the process ends, however it ends, and no child process
/// inherits it; the file itself is never deleted.
class SingleInstanceGuard {
  public:
    /// `dataFolder` is the user's folder for program data; nothing where it cannot be told.
    explicit SingleInstanceGuard(std::optional<std::filesystem::path> dataFolder);
    SingleInstanceGuard(const SingleInstanceGuard&) = delete;
    SingleInstanceGuard& operator=(const SingleInstanceGuard&) = delete;
    ~SingleInstanceGuard();

    /// True when this object holds the lock, now or already. False when another process holds it
    /// or the file cannot be made or opened.
    bool acquire();

    /// `Velmora/velmora.lock` in the data folder, the folders made where they are missing; nothing
    /// where they cannot be made.
    std::optional<std::filesystem::path> lockFilePath() const;

  private:
    std::optional<std::filesystem::path> dataFolder_;
    int lockFileDescriptor_ = -1;
};

}  // namespace velmora
