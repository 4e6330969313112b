// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Tests/Contracts/AtSpi/AtSpiBench.h"

namespace velmora::test {

/// What holds for the text of every toolkit. A suite starts its program once; each check leaves it
/// as it found it, but for the selection.
class AtSpiToolkitTest : public testing::Test {
  protected:
    static void startOnce(std::vector<std::string> command,
                          const ChildProcess::Environment& extra = {});
    static void stop();
    static std::unique_ptr<AtSpiBench> bench;

    void SetUp() override { ASSERT_NE(bench, nullptr) << "the program did not start"; }
    void TearDown() override;

    /// The element that shows this text; fails the test where there is none.
    static AccessibilityElement::Pointer shown(const std::string& text);

    /// The cell of 国 and all ways to it: bounds on its ink, the position under the pointer, texts.
    static void checkCharacter(const std::string& text, const std::string& before,
                               const std::string& after);
    static void checkPair(const std::string& text);
    static void checkEmptySpace(const std::string& text);
    static void checkSelection(const std::string& word);
    static void checkStopped(const std::string& text);
    static void reportTime(const std::string& text);
};

}  // namespace velmora::test
