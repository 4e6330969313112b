// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

namespace velmora::benchmark {

/// The resident memory of a process in megabytes; 0 where there is no such process.
double residentMegabytes(pid_t process);

}  // namespace velmora::benchmark
