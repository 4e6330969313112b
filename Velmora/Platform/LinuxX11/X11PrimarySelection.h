// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace velmora {

/// The text that was selected last on an X display, as its program gives it to whoever wants to
/// insert it. Over a connection of its own, opened when it is first asked. Used by one thread at a
/// time; without a server every answer is nothing.
class X11PrimarySelection {
  public:
    /// Longer texts are not read.
    static constexpr std::size_t greatestLength = 65536;  ///< Bytes.

    /// The display's name is empty for that of the environment.
    explicit X11PrimarySelection(std::string display = {});
    ~X11PrimarySelection();
    X11PrimarySelection(const X11PrimarySelection&) = delete;
    X11PrimarySelection& operator=(const X11PrimarySelection&) = delete;

    /// UTF-8, as the program sent it. Nothing where a window of another process holds the
    /// selection (nobody asks it then), where it is no text or too long, and where the program
    /// does not answer in this time.
    std::optional<std::string> textOf(std::int64_t processId, std::chrono::milliseconds patience);

  private:
    struct Parts;
    std::string display_;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora
