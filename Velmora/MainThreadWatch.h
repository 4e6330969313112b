// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <chrono>

namespace velmora {

/// Tells in the debug log (category velmora.mainthread) what keeps the main thread from looking for
/// what happened meanwhile: every stretch between two such looks that takes longer than one frame
/// of a display (16 ms), and every one that is the longest so far. A line gives the time that
/// passed and its three parts: the thread was at work, or it waited for others (how often), or it
/// was ready and had no processor, since other programs had them all, which no program can help.
/// At its end stands the event that took the most of the time.
///
/// Where messages of the category are not wanted it does nothing. One per process, made on the main
/// thread once the application object is there.
class MainThreadWatch {
  public:
    MainThreadWatch();
    ~MainThreadWatch();
    MainThreadWatch(const MainThreadWatch&) = delete;
    MainThreadWatch& operator=(const MainThreadWatch&) = delete;

    /// Whether anybody wants to know.
    static bool isWanted();

    /// An event of this type, sent to a receiver of this class, took that long.
    static void noteEvent(const char* receiver, int type, std::chrono::nanoseconds taken);
};

}  // namespace velmora
