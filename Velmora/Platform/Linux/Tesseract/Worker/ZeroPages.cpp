// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/ZeroPages.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace velmora {

namespace {

struct Mapping {
    std::uintptr_t first = 0;
    std::uintptr_t last = 0;
};

/// The private writable memory that no file stands behind: the heap and what malloc mapped.
std::vector<Mapping> heapMappings() {
    std::vector<Mapping> mappings;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        unsigned long first = 0;
        unsigned long last = 0;
        char permissions[5] = {};
        unsigned long inode = 0;
        char name[8] = {};
        const int fields = std::sscanf(line.c_str(), "%lx-%lx %4s %*s %*s %lu %7s", &first, &last,
                                       permissions, &inode, name);
        const bool anonymous = fields == 4 || (fields == 5 && std::strcmp(name, "[heap]") == 0);
        if (anonymous && inode == 0 && std::strcmp(permissions, "rw-p") == 0) {
            mappings.push_back({first, last});
        }
    }
    return mappings;
}

bool isZero(const unsigned char* page, std::size_t size) {
    return page[0] == 0 && std::memcmp(page, page + 1, size - 1) == 0;
}

}  // namespace

void giveBackZeroPages() {
    malloc_trim(0);
    const auto pageSize = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    for (const Mapping& mapping : heapMappings()) {
        const std::size_t pages = (mapping.last - mapping.first) / pageSize;
        std::vector<unsigned char> resident(pages);
        // The addresses come from the system's own list.
        auto* start =
            reinterpret_cast<unsigned char*>(mapping.first);  // NOLINT(performance-no-int-to-ptr)
        if (::mincore(start, mapping.last - mapping.first, resident.data()) != 0) {
            continue;
        }
        for (std::size_t i = 0; i < pages; ++i) {
            unsigned char* page = start + i * pageSize;
            if ((resident[i] & 1) != 0 && isZero(page, pageSize)) {
                ::madvise(page, pageSize, MADV_DONTNEED);
            }
        }
    }
}

}  // namespace velmora
