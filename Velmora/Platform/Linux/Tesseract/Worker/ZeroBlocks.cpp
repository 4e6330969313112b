// SPDX-License-Identifier: MIT
// Memory for the tables that Tesseract sets up for its old shape classifier, one of 2304 bytes for
// each of some ten thousand characters, and never uses with its neural networks. From here they
// come without a header between them, so that they fill whole pages with zeros, which
// giveBackZeroPages hands back to the system: ten megabytes for each language.
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

#include "Velmora/Platform/Linux/Tesseract/Worker/ZeroPages.h"

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

namespace {

constexpr std::size_t blockSize = 2304;
constexpr std::size_t regionSize = std::size_t{32} << 20;

/// Blocks are handed out once: they live as long as the languages do. One thread uses them, until
/// closeZeroBlocks: other threads begin only then.
class Region {
  public:
    void* take() {
        if (closed_) {
            return nullptr;
        }
        if (start_ == nullptr) {
            void* memory = ::mmap(nullptr, regionSize, PROT_READ | PROT_WRITE,
                                  MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
            if (memory == MAP_FAILED) {
                return nullptr;
            }
            start_ = static_cast<std::byte*>(memory);
        }
        if (used_ + blockSize > regionSize) {
            return nullptr;
        }
        void* block = start_ + used_;
        used_ += blockSize;
        return block;
    }
    void close() { closed_ = true; }
    bool holds(const void* pointer) const {
        const auto at = reinterpret_cast<std::uintptr_t>(pointer);
        const auto first = reinterpret_cast<std::uintptr_t>(start_);
        return start_ != nullptr && at >= first && at < first + regionSize;
    }

  private:
    std::byte* start_ = nullptr;
    std::size_t used_ = 0;
    bool closed_ = false;
};

constinit Region region;

}  // namespace

void* operator new(std::size_t size) {
    void* memory = size == blockSize ? region.take() : nullptr;
    if (memory == nullptr) {
        memory = std::malloc(size > 0 ? size : 1);
    }
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* pointer) noexcept {
    if (!region.holds(pointer)) {
        std::free(pointer);
    }
}

void operator delete(void* pointer, std::size_t /*size*/) noexcept {
    operator delete(pointer);
}

void velmora::closeZeroBlocks() {
    region.close();
}

#else

void velmora::closeZeroBlocks() {}

#endif
