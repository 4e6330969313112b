// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace velmora {

/// A large piece of memory, zeroed, backed by huge pages where the system has them. Moves, never
/// copies.
class MemoryBlock {
  public:
    MemoryBlock() = default;

    /// Throws std::bad_alloc where there is not enough.
    explicit MemoryBlock(std::size_t size);

    MemoryBlock(MemoryBlock&& other) noexcept;
    MemoryBlock& operator=(MemoryBlock&& other) noexcept;
    MemoryBlock(const MemoryBlock&) = delete;
    MemoryBlock& operator=(const MemoryBlock&) = delete;
    ~MemoryBlock();

    void* data() { return data_; }
    const void* data() const { return data_; }
    std::size_t size() const { return size_; }

  private:
    void* data_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace velmora
