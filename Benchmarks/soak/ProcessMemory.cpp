// SPDX-License-Identifier: MIT
#include "Benchmarks/soak/ProcessMemory.h"

#include <unistd.h>

#include <fstream>
#include <string>

namespace velmora::benchmark {

double residentMegabytes(pid_t process) {
    std::ifstream counts("/proc/" + std::to_string(process) + "/statm");
    double total = 0;
    double resident = 0;
    counts >> total >> resident;
    return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

}  // namespace velmora::benchmark
