#include "platform/linux/updates/QtFeedReader.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace ovin {
namespace {

using namespace std::chrono_literals;

const std::string uri = "http://www.andymatuschak.org/xml-namespaces/sparkle";

std::string feedWith(const std::string& items, const std::string& space = "xmlns:sparkle=\"" + uri + "\"") {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rss version=\"2.0\" " + space + "><channel><title>Ovin</title>" +
           items + "</channel></rss>\n";
}

const std::string wholeItem = R"(<item>
    <title>2.0</title>
    <pubDate>Fri, 20 Nov 2026 12:00:00 +0100</pubDate>
    <sparkle:version> 200 </sparkle:version>
    <sparkle:shortVersionString>2.0</sparkle:shortVersionString>
    <sparkle:minimumSystemVersion>2.36</sparkle:minimumSystemVersion>
    <sparkle:maximumSystemVersion>3</sparkle:maximumSystemVersion>
    <sparkle:channel>beta</sparkle:channel>
    <sparkle:releaseNotesLink>https://ovin.example/notes</sparkle:releaseNotesLink>
    <sparkle:phasedRolloutInterval>86400</sparkle:phasedRolloutInterval>
    <sparkle:criticalUpdate sparkle:version="1.5"/>
    <description><![CDATA[<p>Faster &amp; nicer.</p>]]></description>
    <enclosure url="https://ovin.example/ovin_2.0_amd64.deb" length="123" type="application/octet-stream"
        sparkle:os="linux" sparkle:edSignature="c2ln"/>
    <sparkle:deltas><enclosure url="https://ovin.example/delta" length="1" sparkle:edSignature="x"/></sparkle:deltas>
</item>)";

std::optional<Feed> read(const std::string& text) { return QtFeedReader().read(text); }

TEST(QtFeedReader, EverythingThatAnItemSaysIsRead) {
    const auto feed = read(feedWith(wholeItem));
    ASSERT_TRUE(feed.has_value());
    ASSERT_EQ(feed->size(), 1U);
    FeedItem expected;
    expected.version = "200";
    expected.shortVersion = "2.0";
    expected.operatingSystem = "linux";
    expected.minimumSystemVersion = "2.36";
    expected.maximumSystemVersion = "3";
    expected.channel = "beta";
    expected.url = "https://ovin.example/ovin_2.0_amd64.deb";
    expected.length = 123;
    expected.edSignature = "c2ln";
    expected.notes = "<p>Faster &amp; nicer.</p>";
    expected.notesLink = "https://ovin.example/notes";
    expected.published = 1795172400s;
    expected.phasedRolloutInterval = 24h;
    expected.isCritical = true;
    expected.criticalBefore = "1.5";
    EXPECT_EQ(feed->front(), expected);
}

TEST(QtFeedReader, VersionsMayStandInTheEnclosure) {
    for (const std::string& item :
         {std::string("<item><enclosure sparkle:version='5' sparkle:shortVersionString='0.5'/></item>"),
          std::string("<item><sparkle:version>5</sparkle:version><enclosure sparkle:version='6' "
                      "sparkle:shortVersionString='0.5'/></item>"),
          std::string("<item><enclosure sparkle:version='6' sparkle:shortVersionString='0.5'/>"
                      "<sparkle:version>5</sparkle:version></item>")}) {
        const auto feed = read(feedWith(item));
        ASSERT_TRUE(feed.has_value());
        EXPECT_EQ(feed->at(0).version, "5");
        EXPECT_EQ(feed->at(0).shortVersion, "0.5");
    }
}

TEST(QtFeedReader, ItIsTheNamespaceThatCountsAndNotThePrefix) {
    const std::string item = "<item><s:version>5</s:version><enclosure s:os='linux'/></item>";
    const auto feed = read(feedWith(item, "xmlns:s=\"" + uri + "\""));
    ASSERT_TRUE(feed.has_value());
    EXPECT_EQ(feed->at(0).version, "5");
    EXPECT_EQ(feed->at(0).operatingSystem, "linux");
}

TEST(QtFeedReader, NamesOfOtherNamespacesAreSomethingElse) {
    const std::string item =
        "<item><sparkle:version>5</sparkle:version><enclosure sparkle:os='linux' os='linux'/>"
        "<version>6</version></item>";
    const auto feed = read(feedWith(item, "xmlns:sparkle=\"http://ovin.example/other\""));
    ASSERT_TRUE(feed.has_value());
    EXPECT_EQ(feed->at(0), FeedItem());
}

TEST(QtFeedReader, AnUndeclaredPrefixIsNoXml) { EXPECT_FALSE(read(feedWith(wholeItem, "")).has_value()); }

TEST(QtFeedReader, AnItemMayLackEverything) {
    const auto feed = read(feedWith("<item/>"));
    ASSERT_TRUE(feed.has_value());
    EXPECT_EQ(feed->at(0), FeedItem());
    EXPECT_TRUE(read(feedWith("")).value().empty());
}

TEST(QtFeedReader, ALengthThatIsNoNumberIsNone) {
    for (const char* length : {"", "-1", "ten", "1.5", "99999999999999999999", "0x10"}) {
        const auto feed = read(feedWith("<item><enclosure length='" + std::string(length) + "'/></item>"));
        ASSERT_TRUE(feed.has_value());
        EXPECT_FALSE(feed->at(0).length.has_value()) << length;
    }
}

TEST(QtFeedReader, DatesHaveOffsetsOrUniversalTime) {
    const auto date = [](const std::string& text) {
        return read(feedWith("<item><pubDate>" + text + "</pubDate></item>")).value().at(0).published;
    };
    EXPECT_EQ(date("Fri, 20 Nov 2026 11:00:00 GMT"), 1795172400s);
    EXPECT_EQ(date(" Fri, 20 Nov 2026 11:00:00 +0000\n"), 1795172400s);
    EXPECT_EQ(date("20 Nov 2026 11:00:00 +0000"), 1795172400s);
    EXPECT_EQ(date("yesterday"), std::nullopt);
    EXPECT_EQ(date(""), std::nullopt);
}

TEST(QtFeedReader, AFeedThatIsCutOffAnywhereIsNone) {
    const std::string whole = feedWith(wholeItem);
    ASSERT_TRUE(read(whole).has_value());
    const std::size_t end = whole.rfind('>') + 1;
    for (std::size_t length = 0; length < end; ++length) EXPECT_FALSE(read(whole.substr(0, length)).has_value()) << length;
}

TEST(QtFeedReader, WhatIsNoFeedIsNone) {
    for (const char* text : {"", " ", "not xml", "<html><body/></html>", "<rss>", "{\"a\": 1}", "<feed><item/></feed>",
                             "<rss xmlns='http://ovin.example/'><channel/></rss>", "<rss/><rss/>"}) {
        EXPECT_FALSE(read(text).has_value()) << text;
    }
}

TEST(QtFeedReader, BombsAreRefusedByTheirDeclaration) {
    std::string entities = "<!ENTITY a0 'ha'>";
    for (int i = 1; i < 20; ++i) {
        std::string body;
        for (int j = 0; j < 10; ++j) body += "&a" + std::to_string(i - 1) + ";";
        entities += "<!ENTITY a" + std::to_string(i) + " '" + body + "'>";
    }
    const std::string rest = "<rss><channel><item><description>&a19;</description></item></channel></rss>";
    EXPECT_FALSE(read("<?xml version='1.0'?><!DOCTYPE rss [" + entities + "]>" + rest).has_value());
    EXPECT_FALSE(read("<!DOCTYPE rss [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><rss><channel/></rss>").has_value());
    EXPECT_FALSE(read("<!DOCTYPE rss SYSTEM 'http://ovin.example/a.dtd'><rss><channel/></rss>").has_value());
    EXPECT_FALSE(read("<!DOCTYPE rss><rss><channel/></rss>").has_value());
    EXPECT_FALSE(read(rest).has_value()) << "an entity that nobody has declared";
}

TEST(QtFeedReader, FeedsAsDeepAsNoneIsAreRefused) {
    const auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i) text += "<a>";
        for (int i = 0; i < depth; ++i) text += "</a>";
        return text;
    };
    for (const char* name : {"title", "item", "description", "other"}) {
        for (const int depth : {10, 100, 300000}) {
            const std::string begin = "<" + std::string(name) + ">";
            const std::string end = "</" + std::string(name) + ">";
            EXPECT_EQ(read(feedWith(begin + nested(depth) + end)).has_value(), depth == 10) << name;
            EXPECT_EQ(read(feedWith("<item>" + begin + nested(depth) + end + "</item>")).has_value(), depth == 10) << name;
        }
    }
}

TEST(QtFeedReader, FeedsWithMoreItemsThanAnyHasAreRefused) {
    std::string items;
    for (int i = 0; i < 1001; ++i) items += "<item/>";
    EXPECT_FALSE(read(feedWith(items)).has_value());
}

TEST(QtFeedReader, OtherEncodingsAndControlCharactersDoNoHarm) {
    EXPECT_FALSE(read("<?xml version='1.0' encoding='ebcdic-nonsense'?><rss><channel/></rss>").has_value());
    EXPECT_FALSE(read(std::string("<rss><channel>\0</channel></rss>", 31)).has_value());
    EXPECT_FALSE(read("<rss><channel><item><title>\x01</title></item></channel></rss>").has_value());
}

}  // namespace
}  // namespace ovin
