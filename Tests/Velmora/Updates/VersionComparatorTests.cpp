// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/Updates/VersionComparator.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

void expectOlder(std::string_view older, std::string_view newer) {
    EXPECT_TRUE(compareVersions(older, newer) < 0) << older << " before " << newer;
    EXPECT_TRUE(compareVersions(newer, older) > 0) << newer << " after " << older;
}

void expectSame(std::string_view left, std::string_view right) {
    EXPECT_TRUE(compareVersions(left, right) == 0) << left << " as " << right;
}

TEST(VersionComparator, ComparesNumbersByValue) {
    expectOlder("1.9", "1.10");
    expectOlder("0.1.0", "0.2");
    expectOlder("99", "100");
    expectSame("1.02", "1.2");
    expectOlder("1.99999999999999999999", "1.100000000000000000000");
}

TEST(VersionComparator, TakesAContinuationWithANumberForNewer) {
    expectOlder("1.0", "1.0.1");
    expectOlder("1.5", "1.5.0");
}

TEST(VersionComparator, TakesAContinuationWithAWordForOlder) {
    expectOlder("1.5b3", "1.5");
    expectOlder("2.0-rc1", "2.0");
    expectOlder("1.5b2", "1.5b10");
    expectOlder("1.5alpha", "1.5beta");
}

TEST(VersionComparator, TakesANumberForNewerThanAWord) {
    expectOlder("1.beta", "1.0");
}

TEST(VersionComparator, TreatsAllSeparatorsAlike) {
    expectSame("1.2.3", "1-2_3");
    expectSame("1.2", "1..2");
    expectSame("", "");
    expectOlder("", "1");
}

}  // namespace
}  // namespace velmora::test
