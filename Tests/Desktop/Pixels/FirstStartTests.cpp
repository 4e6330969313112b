// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Tests/Desktop/Support/DrawnForms.h"
#include "Tests/Desktop/Support/RunningVelmora.h"

namespace velmora::test {
namespace {

/// Long enough for the least of priorities on a busy machine.
constexpr auto patienceForDrawing = std::chrono::minutes(4);

TEST(FirstStart, drawsTheFormsOfTheSystemsFontsAndTheNextStartHasThem) {
    DrawnForms::forget();
    VirtualDesktop desktop;
    const std::filesystem::path cache = desktop.environment().at("XDG_CACHE_HOME");
    const std::filesystem::path forms = DrawnForms::inCache(cache);
    ASSERT_FALSE(std::filesystem::exists(forms));
    {
        RunningVelmora velmora(desktop);
        ASSERT_TRUE(
            desktop.waitUntil([&] { return std::filesystem::exists(forms); }, patienceForDrawing))
            << velmora.log();
    }
    const auto drawn = std::filesystem::last_write_time(forms);
    DrawnForms::keep(cache);

    RunningVelmora again(desktop);
    desktop.awaitRest(again.process());
    EXPECT_EQ(std::filesystem::last_write_time(forms), drawn);
}

}  // namespace
}  // namespace velmora::test
