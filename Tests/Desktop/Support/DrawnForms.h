// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace velmora::test {

/// The forms of characters that recognition compares with. A first start draws them for some
/// seconds; so that not every test waits for that, or depends on how far it is, one test draws them
/// and the others begin with what it kept in the build folder.
class DrawnForms {
  public:
    /// Where a program with this cache folder has them once they are drawn.
    static std::filesystem::path inCache(const std::filesystem::path& cacheHome);

    /// Gives a program that is yet to start what was kept; nothing where nothing was.
    static void lend(const std::filesystem::path& cacheHome);

    /// Keeps what a program drew, in one step. Throws std::filesystem::filesystem_error where that
    /// fails.
    static void keep(const std::filesystem::path& cacheHome);

    /// Forgets what was kept.
    static void forget();
};

}  // namespace velmora::test
