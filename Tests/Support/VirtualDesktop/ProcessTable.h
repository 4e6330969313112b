// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace velmora::test {

/// What the system tells of the processes that run.
class ProcessTable {
  public:
    struct Line {
        std::string name;  ///< Of the program, cut to 15 characters.
        pid_t parent = -1;
        pid_t session = -1;
        long long ticks = 0;  ///< Of processor time.
    };

    /// Nothing for a process that has ended, also where nobody has asked for its status yet.
    static std::optional<Line> line(pid_t pid);

    /// What a process had read from disks so far, in bytes, its mapped files included; zero for one
    /// that has ended or is not ours.
    static long long bytesRead(pid_t pid);

    static std::vector<pid_t> all();

    /// Ends these at once and waits until they are gone, those that are not our children included.
    /// Takes the status of those that are.
    static void kill(const std::vector<pid_t>& pids);
};

}  // namespace velmora::test
