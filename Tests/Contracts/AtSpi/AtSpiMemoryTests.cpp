// SPDX-License-Identifier: MIT
// What is remembered from one extraction to the next.
#include <gtest/gtest.h>

#include "Velmora/Platform/Linux/AtSpi/AtSpiFocusMemory.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiForesight.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

namespace velmora {
namespace {

const QString program = QStringLiteral(":1.7");
const AtSpiObject window{program, QStringLiteral("/window")};
const AtSpiObject element{program, QStringLiteral("/element")};

AtSpiSpace space() {
    const Rect whole{0, 0, 1000, 800};
    return {ScreenGeometry({{1, whole, 1, whole}}), AtSpiCoordinates::screen, whole, whole};
}

TEST(AtSpiPieces, asksWhatTheLastExtractionAskedAtTheNewPlace) {
    AtSpiForesight foresight;
    foresight.begin();
    EXPECT_TRUE(foresight.expected(program, Point{10, 20}).isEmpty());
    foresight.note(atspirequest::role(element));
    foresight.note(atspirequest::elementAtPoint(window, space(), {10, 20}));
    foresight.note(atspirequest::role(element));

    foresight.begin();
    const QList<QDBusMessage> calls = foresight.expected(program, Point{300, 40});
    ASSERT_EQ(calls.size(), 2);
    EXPECT_EQ(calls.at(0).member(), QStringLiteral("GetRole"));
    EXPECT_EQ(calls.at(1).member(), QStringLiteral("GetAccessibleAtPoint"));
    EXPECT_EQ(calls.at(1).arguments().at(0).toInt(), 300);
    EXPECT_EQ(calls.at(1).arguments().at(1).toInt(), 40);
    // Once in an extraction, and of what it asked itself only.
    EXPECT_TRUE(foresight.expected(program, Point{300, 40}).isEmpty());
    foresight.begin();
    EXPECT_TRUE(foresight.expected(program, Point{300, 40}).isEmpty());
}

TEST(AtSpiPieces, leavesPlacesOutWhereThereIsNone) {
    AtSpiForesight foresight;
    foresight.expected(program, std::nullopt);
    foresight.note(atspirequest::elementAtPoint(window, space(), {10, 20}));
    foresight.note(atspirequest::states(element));
    foresight.begin();
    const QList<QDBusMessage> calls = foresight.expected(program, std::nullopt);
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls.first().member(), QStringLiteral("GetState"));
}

TEST(AtSpiPieces, keepsAnswersForOneExtraction) {
    AtSpiForesight foresight;
    foresight.begin();
    const QDBusMessage call = atspirequest::text(element, 0, 5);
    const QDBusMessage reply = call.createReply(QVariant(QStringLiteral("学习")));
    foresight.keep(call, reply);
    ASSERT_TRUE(foresight.answer(atspirequest::text(element, 0, 5)));
    EXPECT_EQ(foresight.answer(call)->arguments().first().toString(), QStringLiteral("学习"));
    // Every part of the call counts.
    EXPECT_FALSE(foresight.answer(atspirequest::text(element, 0, 6)));
    EXPECT_FALSE(foresight.answer(atspirequest::text(window, 0, 5)));
    EXPECT_FALSE(foresight.answer(atspirequest::characterCount(element)));
    foresight.begin();
    EXPECT_FALSE(foresight.answer(call));
}

TEST(AtSpiPieces, forgetsAProgramThatLeft) {
    AtSpiForesight foresight;
    foresight.expected(program, std::nullopt);
    foresight.note(atspirequest::states(element));
    foresight.forget(program);
    foresight.begin();
    EXPECT_TRUE(foresight.expected(program, std::nullopt).isEmpty());
}

TEST(AtSpiPieces, remembersAnEndlessExtractionInPart) {
    AtSpiForesight foresight;
    foresight.expected(program, std::nullopt);
    for (int i = 0; i < 10000; ++i) {
        foresight.note(atspirequest::text(element, i, i + 1));
    }
    foresight.begin();
    EXPECT_LE(foresight.expected(program, std::nullopt).size(), 200);
}

TEST(AtSpiPieces, believesWhatAProgramTellsOfItsFocus) {
    AtSpiFocusMemory memory;
    memory.tell(element, true);
    EXPECT_EQ(memory.told(program), element);
    memory.tell(window, false);
    EXPECT_EQ(memory.told(program), element);
    memory.tell(element, false);
    EXPECT_FALSE(memory.told(program));
}

TEST(AtSpiPieces, remembersASearchedFocusUntilTheProgramTellsOfAny) {
    AtSpiFocusMemory memory;
    memory.see(program, window, element);
    EXPECT_EQ(memory.seen(program, window), element);
    EXPECT_FALSE(memory.seen(program, element));  // Another window.
    memory.tell(window, false);
    EXPECT_FALSE(memory.seen(program, window));
    memory.see(program, window, element);
    memory.forget(program);
    EXPECT_FALSE(memory.seen(program, window));
}

TEST(AtSpiPieces, searchesInVainOnceInAWhile) {
    AtSpiFocusMemory memory;
    const auto now = AtSpiFocusMemory::Clock::now();
    EXPECT_FALSE(memory.searchedInVain(program, window, now));
    memory.searchInVain(program, window, now);
    EXPECT_TRUE(memory.searchedInVain(program, window, now + std::chrono::seconds(9)));
    EXPECT_FALSE(memory.searchedInVain(program, window, now + std::chrono::seconds(11)));
    EXPECT_FALSE(memory.searchedInVain(program, element, now));  // Another window.
    memory.tell(element, true);
    EXPECT_FALSE(memory.searchedInVain(program, window, now));
    memory.searchInVain(program, window, now);
    memory.forget(program);
    EXPECT_FALSE(memory.searchedInVain(program, window, now));
    memory.searchInVain(program, window, now);
    memory.forgetAll();
    EXPECT_FALSE(memory.searchedInVain(program, window, now));
}

}  // namespace
}  // namespace velmora
