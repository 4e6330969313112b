// SPDX-License-Identifier: MIT
#include "VelmoraCore/MemoryBlock.h"

#include <sys/mman.h>

#include <new>
#include <utility>

namespace velmora {

MemoryBlock::MemoryBlock(std::size_t size) : size_(size) {
    if (size == 0) {
        return;
    }
    void* const mapped =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) {
        throw std::bad_alloc();
    }
    data_ = mapped;
#ifdef MADV_HUGEPAGE
    // Fewer page faults while it is filled and fewer address translations while it is searched;
    // nothing is lost where the system says no.
    (void)madvise(data_, size_, MADV_HUGEPAGE);
#endif
}

MemoryBlock::MemoryBlock(MemoryBlock&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}

MemoryBlock& MemoryBlock::operator=(MemoryBlock&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    return *this;
}

MemoryBlock::~MemoryBlock() {
    if (data_ != nullptr) {
        munmap(data_, size_);
    }
}

}  // namespace velmora
