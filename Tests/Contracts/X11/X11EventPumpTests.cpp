// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11EventPump.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <xcb/xcbext.h>

#include <functional>
#include <vector>

#include "Tests/Contracts/X11/Support/EventLoop.h"
#include "Tests/Contracts/X11/Support/PrivateServer.h"

namespace velmora {
namespace {

using test::EventLoop;
using test::PrivateServer;

class X11EventPumpTests : public ::testing::Test {
  protected:
    X11EventPumpTests() {
        const std::uint32_t wanted = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(c, connection.root(), XCB_CW_EVENT_MASK, &wanted);
    }

    /// Makes an event; it arrives behind the answers to what was asked before.
    void makeEvent(xcb_atom_t kind = XCB_ATOM_CUT_BUFFER0) {
        const std::uint32_t value = 1;
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, connection.root(), kind, XCB_ATOM_INTEGER, 32,
                            1, &value);
        xcb_flush(c);
    }

    /// Asks something; the answer arrives like an event.
    void ask() {
        question = xcb_get_input_focus(c).sequence;
        xcb_flush(c);
    }

    /// Returns when something is there to be read from the connection, and reads nothing.
    bool hasArrived() {
        constexpr int patience = 60000;  // Milliseconds; machines that run tests may be slow.
        pollfd arriving{xcb_get_file_descriptor(c), POLLIN, 0};
        return ::poll(&arriving, 1, patience) == 1;
    }

    /// Waits for an answer of its own: whatever arrived before has been read then.
    void waitForAnAnswer() {
        EXPECT_TRUE(xcbOwned(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr)));
    }

    /// What the pump's owner does at the end of each batch: takes the answer where it is there.
    void takeAnswer() {
        void* answer = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (question != 0 && xcb_poll_for_reply(c, question, &answer, &error) != 0) {
            question = 0;
            answers += xcbOwned(answer) ? 1 : 0;
            EXPECT_FALSE(xcbOwned(error));
        }
    }

    EventLoop loop;
    PrivateServer server;
    X11Connection connection{server.display()};
    xcb_connection_t* c = connection.get();
    std::vector<xcb_atom_t> events;  ///< The properties that they told of.
    int batches = 0;
    int answers = 0;
    unsigned int question = 0;
    std::function<void()> finish = [this] { takeAnswer(); };
    X11EventPump pump{
        connection,
        [this](const xcb_generic_event_t& event) {
            events.push_back(reinterpret_cast<const xcb_property_notify_event_t&>(event).atom);
        },
        [this] {
            ++batches;
            finish();
        }};
};

TEST_F(X11EventPumpTests, AnAnswerThatComesWhileABatchIsFinishedIsNotOverlooked) {
    finish = [this] {
        takeAnswer();
        if (batches == 1) {
            ask();
            ASSERT_TRUE(hasArrived());  // Too late for this batch, and before its end.
        }
    };
    makeEvent();
    ASSERT_TRUE(EventLoop::waitUntil([this] { return batches > 0; }));
    // It is there already: nothing has to be awaited.
    EventLoop::settle();
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(events.size(), 1U);
}

TEST_F(X11EventPumpTests, AnEventThatIsReadWhileABatchIsFinishedIsHandledAtOnce) {
    finish = [this] {
        if (batches == 1) {
            makeEvent();
            waitForAnAnswer();
        }
    };
    makeEvent();
    ASSERT_TRUE(EventLoop::waitUntil([this] { return batches > 0; }));
    EXPECT_EQ(batches, 2);
    EXPECT_EQ(events.size(), 2U);
}

TEST_F(X11EventPumpTests, AnEventThatIsReadOutsideWaitsForTheEventLoop) {
    makeEvent();
    waitForAnAnswer();
    pump.keepEarlyEvents();
    EXPECT_TRUE(events.empty());
    EventLoop::settle();
    EXPECT_EQ(events.size(), 1U);
    EXPECT_EQ(batches, 1);
}

TEST_F(X11EventPumpTests, EventsKeepTheirOrderHoweverTheyWereRead) {
    makeEvent(XCB_ATOM_CUT_BUFFER0);
    waitForAnAnswer();
    pump.keepEarlyEvents();
    makeEvent(XCB_ATOM_CUT_BUFFER1);
    waitForAnAnswer();
    pump.keepEarlyEvents();
    makeEvent(XCB_ATOM_CUT_BUFFER2);
    ASSERT_TRUE(hasArrived());
    EventLoop::settle();
    EXPECT_EQ(events, (std::vector<xcb_atom_t>{XCB_ATOM_CUT_BUFFER0, XCB_ATOM_CUT_BUFFER1,
                                               XCB_ATOM_CUT_BUFFER2}));
}

TEST_F(X11EventPumpTests, AnAnswerThatIsReadWithAnotherIsTakenSoon) {
    ask();
    waitForAnAnswer();
    pump.finishSoon();
    EXPECT_EQ(answers, 0);
    EventLoop::settle();
    EXPECT_EQ(answers, 1);
}

TEST_F(X11EventPumpTests, TheEndOfTheServerWakesItOnce) {
    server.crash();
    ASSERT_TRUE(EventLoop::waitUntil([this] { return batches > 0; }));
    EXPECT_FALSE(EventLoop::handleNow());  // Though the connection can be read for ever.
    EXPECT_EQ(batches, 1);
}

}  // namespace
}  // namespace velmora
