// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/Updates/AppcastParser.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

std::string feed(const std::string& items) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><rss version=\"2.0\" "
           "xmlns:u=\"http://example.invalid/feed\"><channel><title>Velmora</title>" +
           items + "</channel></rss>";
}

const std::string wholeItem =
    "<item><title>Version 1.2</title><u:version>120</u:version>"
    "<u:shortVersionString>1.2.0</u:shortVersionString>"
    "<description><![CDATA[<h2>New</h2><ul><li>Faster &amp; better</li></ul>]]></description>"
    "<enclosure url=\"https://updates.example/velmora.deb\" length=\"1234\" "
    "type=\"application/octet-stream\" u:edSignature=\"c2ln\"/></item>";

TEST(AppcastParser, ReadsAnItem) {
    const auto items = AppcastParser::parse(feed(wholeItem));
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 1U);
    const AppcastItem& item = items->front();
    EXPECT_EQ(item.version, "120");
    EXPECT_EQ(item.shortVersion, "1.2.0");
    EXPECT_EQ(item.displayVersion(), "1.2.0");
    EXPECT_EQ(item.releaseNotes, "New\n• Faster & better");
    EXPECT_EQ(item.enclosureUrl, "https://updates.example/velmora.deb");
    EXPECT_EQ(item.length, 1234);
    EXPECT_EQ(item.edSignature, "c2ln");
}

TEST(AppcastParser, ReadsVersionsFromTheEnclosure) {
    const auto items = AppcastParser::parse(
        feed("<item><enclosure url=\"https://u.example/p\" length=\"1\" u:version=\"7\" "
             "u:shortVersionString=\"0.7\" u:edSignature=\"x\"/></item>"));
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 1U);
    EXPECT_EQ(items->front().version, "7");
    EXPECT_EQ(items->front().displayVersion(), "0.7");
}

TEST(AppcastParser, ShowsTheVersionWhereThereIsNoShortOne) {
    AppcastItem item;
    item.version = "42";
    EXPECT_EQ(item.displayVersion(), "42");
}

TEST(AppcastParser, LeavesIncompleteItemsOut) {
    const std::string incomplete[] = {
        "<item><enclosure url=\"https://u.example/p\" length=\"1\" u:edSignature=\"x\"/></item>",
        "<item><u:version>1</u:version></item>",
        "<item><u:version>1</u:version><enclosure url=\"https://u.example/p\" "
        "length=\"1\"/></item>",
        "<item><u:version>1</u:version><enclosure url=\"http://u.example/p\" length=\"1\" "
        "u:edSignature=\"x\"/></item>",
        "<item><u:version>1</u:version><enclosure url=\"https://u.example/p\" length=\"0\" "
        "u:edSignature=\"x\"/></item>",
        "<item><u:version>1</u:version><enclosure url=\"https://u.example/p\" length=\"-5\" "
        "u:edSignature=\"x\"/></item>",
        "<item><u:version>1</u:version><enclosure url=\"file:///etc/passwd\" length=\"9\" "
        "u:edSignature=\"x\"/></item>",
    };
    for (const std::string& item : incomplete) {
        const auto items = AppcastParser::parse(feed(item));
        ASSERT_TRUE(items) << item;
        EXPECT_TRUE(items->empty()) << item;
    }
}

TEST(AppcastParser, RefusesWhatIsNoFeed) {
    EXPECT_FALSE(AppcastParser::parse(""));
    EXPECT_FALSE(AppcastParser::parse("<html><body>404</body></html>"));
    EXPECT_FALSE(AppcastParser::parse("not xml"));
    const std::string whole = feed(wholeItem);
    EXPECT_FALSE(AppcastParser::parse(whole.substr(0, whole.size() / 2)));
}

TEST(AppcastParser, BoundsWhatItReads) {
    EXPECT_FALSE(AppcastParser::parse(feed(std::string(2 << 20, ' '))));
    std::string many;
    for (int count = 0; count < 501; ++count) {
        many += "<item/>";
    }
    EXPECT_FALSE(AppcastParser::parse(feed(many)));
}

TEST(AppcastParser, DoesNotExpandEntities) {
    const auto items = AppcastParser::parse(
        "<?xml version=\"1.0\"?><!DOCTYPE rss [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b "
        "\"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">"
        "<!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">]><rss><channel><item><description>"
        "&d;&d;&d;&d;&d;&d;&d;&d;</description></item></channel></rss>");
    EXPECT_TRUE(!items || items->empty());
}

TEST(AppcastParser, TurnsNotesIntoPlainText) {
    EXPECT_EQ(AppcastParser::plainText("<p>One</p><p>Two<br>Three</p>"), "One\nTwo\nThree");
    EXPECT_EQ(AppcastParser::plainText("<script>alert(1)</script>safe<!-- no -->"), "safe");
    EXPECT_EQ(AppcastParser::plainText("1 &lt; 2 &amp;&amp; 3 > 2"), "1 < 2 && 3 > 2");
    EXPECT_LE(AppcastParser::plainText(std::string(1 << 20, 'x')).size(), 20'000U);
}

}  // namespace
}  // namespace velmora::test
