// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

struct xcb_connection_t;

namespace velmora::test {

/// Holds the text that was selected last on a display, in a thread and over a connection of its
/// own.
class SelectionOwner {
  public:
    enum class Manner {
        gives,    ///< The text, as UTF-8.
        gruff,    ///< Refuses.
        foreign,  ///< Gives bytes of another type.
        silent    ///< Never answers.
    };

    SelectionOwner(const std::string& display, std::string text, Manner manner = Manner::gives);
    ~SelectionOwner();
    SelectionOwner(const SelectionOwner&) = delete;
    SelectionOwner& operator=(const SelectionOwner&) = delete;

    void behave(Manner manner) { manner_ = manner; }
    int questions() const { return questions_; }

  private:
    void serve();
    std::uint32_t atom(const std::string& name) const;

    std::string text_;
    std::atomic<Manner> manner_;
    std::atomic<int> questions_ = 0;
    xcb_connection_t* connection_;
    std::uint32_t window_;
    std::uint32_t farewell_;
    std::thread thread_;
};

}  // namespace velmora::test
