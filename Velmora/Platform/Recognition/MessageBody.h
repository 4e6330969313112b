// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Velmora/Platform/Recognition/GrayImage.h"

namespace velmora {

/// Puts the parts of a message's body one after the other.
class MessageWriter {
  public:
    template <typename Value>
    void put(Value value) {
        static_assert(std::is_trivially_copyable_v<Value>);
        const std::size_t at = bytes_.size();
        bytes_.resize(at + sizeof(Value));
        std::memcpy(bytes_.data() + at, &value, sizeof(Value));
    }
    void putBytes(const void* data, std::size_t size) {
        const auto* first = static_cast<const std::uint8_t*>(data);
        bytes_.insert(bytes_.end(), first, first + size);
    }
    /// A picture, which must be the last part.
    void putPicture(const GrayImage& picture);

    std::vector<std::uint8_t> take() { return std::move(bytes_); }

  private:
    std::vector<std::uint8_t> bytes_;
};

/// Takes them out again; every call says whether the part was there.
class MessageReader {
  public:
    explicit MessageReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    template <typename Value>
    bool get(Value& value) {
        static_assert(std::is_trivially_copyable_v<Value>);
        if (bytes_.size() < sizeof(Value)) {
            return false;
        }
        std::memcpy(&value, bytes_.data(), sizeof(Value));
        bytes_ = bytes_.subspan(sizeof(Value));
        return true;
    }
    std::span<const std::uint8_t> rest() const { return bytes_; }
    bool getText(std::size_t size, std::string& text);
    /// A picture within the sizes that messages allow, which must be the last part.
    std::optional<GrayImage> getPicture();

  private:
    std::span<const std::uint8_t> bytes_;
};

}  // namespace velmora
