// SPDX-License-Identifier: MIT
// Two windows of one program at one place: what lies above is read.
#include <gtest/gtest.h>

#include <vector>

#include "Tests/Contracts/AtSpi/AtSpiBench.h"

namespace velmora::test {
namespace {

const std::string otherText = "另外一个窗口里的文字\n";

std::vector<VirtualDesktop::Window> windowsOf(AtSpiBench& bench) {
    std::vector<VirtualDesktop::Window> found;
    for (const VirtualDesktop::Window& window : bench.desktop().windows()) {
        if (bench.program().owns(window.processId) && window.client.width > 40) {
            found.push_back(window);
        }
    }
    return found;
}

/// The text of the element in the middle of the first line, read anew until it is this one.
bool readsAt(AtSpiBench& bench, Point place, const std::string& text) {
    return bench.desktop().waitUntil([&] {
        const auto element = bench.system().elementAtPosition(place);
        return element != nullptr && element->value().value_or("").starts_with(text);
    });
}

TEST(AtSpiTwoWindows, ReadsTheUpperOne) {
    AtSpiBench bench;
    const std::string first = bench.desktop().writeFile("sample.txt", contractText).string();
    const std::string second = bench.desktop().writeFile("other.txt", otherText).string();
    bench.start({"mousepad", first});
    const VirtualDesktop::Window lower = bench.window();
    bench.desktop().run({"mousepad", "--opening-mode=window", second});
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return windowsOf(bench).size() == 2; }));
    VirtualDesktop::Window upper;
    for (const VirtualDesktop::Window& window : windowsOf(bench)) {
        if (window.id != lower.id) {
            upper = window;
        }
    }
    // Exactly one over the other.
    bench.desktop().placeWindow(upper.id, lower.client);
    const Point middle{lower.client.midX(), lower.client.midY()};
    bench.desktop().activateWindow(upper.id);
    EXPECT_TRUE(readsAt(bench, middle, otherText.substr(0, 12)));
    bench.desktop().activateWindow(lower.id);
    EXPECT_TRUE(readsAt(bench, middle, std::string(contractText).substr(0, 12)));
    bench.desktop().activateWindow(upper.id);
    EXPECT_TRUE(readsAt(bench, middle, otherText.substr(0, 12)));
}

}  // namespace
}  // namespace velmora::test
