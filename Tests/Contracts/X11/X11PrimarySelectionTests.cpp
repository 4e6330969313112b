// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11PrimarySelection.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "Tests/Contracts/X11/Support/PrivateServer.h"
#include "Tests/Contracts/X11/Support/SelectionOwner.h"

namespace velmora {
namespace {

using test::PrivateServer;
using test::SelectionOwner;
using Manner = SelectionOwner::Manner;

constexpr std::chrono::milliseconds longTime{60000};
constexpr std::chrono::milliseconds shortTime{50};

class X11PrimarySelectionTests : public ::testing::Test {
  protected:
    std::optional<std::string> read(std::chrono::milliseconds patience = longTime) {
        return selection.textOf(getpid(), patience);
    }

    PrivateServer server;
    X11PrimarySelection selection{server.display()};
};

TEST_F(X11PrimarySelectionTests, GivesTheTextThatWasSelectedLast) {
    EXPECT_EQ(read(), std::nullopt);
    const SelectionOwner first(server.display(), "今天天气");
    EXPECT_EQ(read(), "今天天气");
    EXPECT_EQ(read(), "今天天气");
    const SelectionOwner second(server.display(), "很好");
    EXPECT_EQ(read(), "很好");
    EXPECT_EQ(first.questions(), 2);
}

TEST_F(X11PrimarySelectionTests, DoesNotAskAnotherProcess) {
    const SelectionOwner owner(server.display(), "今天");
    EXPECT_EQ(selection.textOf(getppid(), longTime), std::nullopt);
    EXPECT_EQ(selection.textOf(-1, longTime), std::nullopt);
    EXPECT_EQ(selection.textOf(0, longTime), std::nullopt);
    EXPECT_EQ(owner.questions(), 0);
}

TEST_F(X11PrimarySelectionTests, WhatIsNoTextIsNothing) {
    SelectionOwner owner(server.display(), "今天", Manner::gruff);
    EXPECT_EQ(read(), std::nullopt);
    owner.behave(Manner::foreign);
    EXPECT_EQ(read(), std::nullopt);
    owner.behave(Manner::gives);
    EXPECT_EQ(read(), "今天");
}

TEST_F(X11PrimarySelectionTests, ASilentOwnerCostsNoMoreThanTheTimeGiven) {
    SelectionOwner owner(server.display(), "今天", Manner::silent);
    EXPECT_EQ(read(shortTime), std::nullopt);
    EXPECT_EQ(read(std::chrono::milliseconds(0)), std::nullopt);
    owner.behave(Manner::gives);
    EXPECT_EQ(read(), "今天");
}

TEST_F(X11PrimarySelectionTests, LongTextsAreNotRead) {
    {
        const SelectionOwner owner(server.display(),
                                   std::string(X11PrimarySelection::greatestLength, 'a'));
        EXPECT_EQ(read().value_or("").size(), X11PrimarySelection::greatestLength);
    }
    {
        const SelectionOwner owner(server.display(),
                                   std::string(X11PrimarySelection::greatestLength + 1, 'a'));
        EXPECT_EQ(read(), std::nullopt);
    }
    // What was not read is not in the way of what comes next.
    const SelectionOwner owner(server.display(), "今天");
    EXPECT_EQ(read(), "今天");
}

TEST_F(X11PrimarySelectionTests, WithoutAServerThereIsNothing) {
    X11PrimarySelection nowhere(":9999");
    EXPECT_EQ(nowhere.textOf(getpid(), longTime), std::nullopt);
    const SelectionOwner owner(server.display(), "今天");
    EXPECT_EQ(read(), "今天");
    server.crash();
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_EQ(read(), std::nullopt);
}

}  // namespace
}  // namespace velmora
