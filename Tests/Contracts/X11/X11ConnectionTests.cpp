// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Connection.h"

#include <gtest/gtest.h>

#include "Tests/Contracts/X11/Support/PausedServer.h"
#include "Tests/Contracts/X11/Support/PrivateServer.h"

namespace velmora {
namespace {

using test::PausedServer;
using test::PrivateServer;

TEST(X11ConnectionTests, KnowsTheAtomsThatItHasLearned) {
    PrivateServer server;
    X11Connection other(server.display());
    X11Connection connection(server.display());
    connection.learnAtoms({"ONE_ATOM", "ANOTHER_ATOM"});
    xcb_atom_t one = XCB_ATOM_NONE;
    xcb_atom_t another = XCB_ATOM_NONE;
    {
        const PausedServer paused(server);
        one = connection.atom("ONE_ATOM");
        another = connection.atom("ANOTHER_ATOM");
        EXPECT_FALSE(paused.wasAwaited());
    }
    EXPECT_NE(one, static_cast<xcb_atom_t>(XCB_ATOM_NONE));
    EXPECT_EQ(one, other.atom("ONE_ATOM"));
    EXPECT_EQ(another, other.atom("ANOTHER_ATOM"));
    EXPECT_NE(one, another);
}

TEST(X11ConnectionTests, LearnsNoAtomsWhereTheServerIsGone) {
    PrivateServer server;
    X11Connection connection(server.display());
    server.crash();
    connection.learnAtoms({"ONE_ATOM"});
    EXPECT_EQ(connection.atom("ONE_ATOM"), static_cast<xcb_atom_t>(XCB_ATOM_NONE));
    EXPECT_FALSE(connection.isOpen());
}

}  // namespace
}  // namespace velmora
