#include "platform/linux/updates/FeedText.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <utility>
#include <vector>

namespace ovin {
namespace {

std::string feedOf(const std::string& items) {
    return "<?xml version='1.0' encoding='utf-8'?>\n"
           "<rss version='2.0' xmlns:sparkle='http://www.andymatuschak.org/xml-namespaces/sparkle'>"
           "<channel><title>Ovin</title><link>https://ovin.example/</link>" +
           items + "</channel></rss>";
}

const std::string enclosure = "<enclosure url='https://ovin.example/' sparkle:os='linux'/>";

std::string item(const std::string& content) { return "<item>" + content + enclosure + "</item>"; }

/// The only item of a feed with this one.
FeedItem read(const std::string& content) {
    const auto items = readFeed(feedOf(item(content)));
    if (!items || items->size() != 1) return {"none", "", ""};
    return items->front();
}

/// How many items a text has; -1 if it is no feed.
int count(const std::string& text) {
    const auto items = readFeed(text);
    return items ? static_cast<int>(items->size()) : -1;
}

TEST(FeedText, AnItemSaysItsVersionsAndItsPage) {
    EXPECT_EQ(read("<title>Ovin 2.0</title><link> https://ovin.example/2 </link><sparkle:version>200</sparkle:version>"
                   "<sparkle:shortVersionString>2.0</sparkle:shortVersionString><description>News</description>"),
              (FeedItem{"200", "2.0", "https://ovin.example/2"}));
    EXPECT_EQ(read(""), FeedItem());
}

TEST(FeedText, ItemsComeInTheirOrder) {
    const auto items = readFeed(feedOf(item("<sparkle:version>3</sparkle:version>") + item("") + item("<link>a</link>")));
    EXPECT_EQ(items, (std::vector<FeedItem>{{"3", "", ""}, {}, {"", "", "a"}}));
}

TEST(FeedText, VersionsMayStandOnTheEnclosureAndElementsWin) {
    const std::string both = "<enclosure sparkle:os='linux' sparkle:version='200' sparkle:shortVersionString='2.0'/>";
    EXPECT_EQ(readFeed(feedOf("<item>" + both + "</item>")), (std::vector<FeedItem>{{"200", "2.0", ""}}));
    const std::string version = "<sparkle:version>300</sparkle:version>";
    for (const std::string& content : {both + version, version + both})
        EXPECT_EQ(readFeed(feedOf("<item>" + content + "</item>")), (std::vector<FeedItem>{{"300", "2.0", ""}}));
}

TEST(FeedText, ItemsForOtherSystemsAndForTestersAreLeftOut) {
    EXPECT_EQ(count(feedOf("<item><sparkle:version>2</sparkle:version></item>")), 0);
    EXPECT_EQ(count(feedOf("<item><enclosure sparkle:os='macos'/></item>")), 0);
    EXPECT_EQ(count(feedOf("<item><enclosure os='linux'/></item>")), 0) << "another namespace";
    EXPECT_EQ(count(feedOf(item("<sparkle:channel>beta</sparkle:channel>"))), 0);
    EXPECT_EQ(count(feedOf(item("<sparkle:channel> </sparkle:channel>"))), 1);
    // A change from one version to the next (a delta) is no version of its own.
    const std::string delta = "<item><sparkle:deltas>" + enclosure + "</sparkle:deltas></item>";
    EXPECT_EQ(count(feedOf(delta)), 0);
}

TEST(FeedText, TheNamespaceCountsAndNotItsPrefix) {
    const std::string text =
        "<rss xmlns:s='http://www.andymatuschak.org/xml-namespaces/sparkle' xmlns:sparkle='https://ovin.example/'><channel>"
        "<item><s:version>2</s:version><sparkle:version>3</sparkle:version><enclosure s:os='linux'/></item></channel></rss>";
    EXPECT_EQ(readFeed(text), (std::vector<FeedItem>{{"2", "", ""}}));
}

TEST(FeedText, TheTextWithinOtherElementsIsLeftOut) {
    EXPECT_EQ(read("<link>a<b>c</b>d</link>").link, "ad");
    EXPECT_EQ(read("<other><link>a</link></other>").link, "");
    EXPECT_EQ(read("<link><![CDATA[https://ovin.example/?a&b]]></link>").link, "https://ovin.example/?a&b");
    EXPECT_EQ(read("<link>a&amp;b&#x41;</link>").link, "a&bA");
}

TEST(FeedText, ItemsElsewhereThanInTheChannelAreNone) {
    const std::string one = item("");
    EXPECT_EQ(count("<rss xmlns:sparkle='http://www.andymatuschak.org/xml-namespaces/sparkle'>" + one + "<channel/></rss>"),
              0);
    EXPECT_EQ(
        count("<rss xmlns:sparkle='http://www.andymatuschak.org/xml-namespaces/sparkle'><other>" + one + "</other></rss>"),
        0);
    EXPECT_EQ(count(feedOf("<group>" + one + "</group>")), 0);
}

TEST(FeedText, WhatIsNoFeedIsRefused) {
    const std::string whole = feedOf(item(""));
    EXPECT_EQ(count(whole), 1);
    for (const std::string& text :
         {std::string(), std::string("x"), std::string("<rss>"), whole.substr(0, whole.size() - 5), whole + "x",
          std::string("<html><body/></html>"), std::string("<feed xmlns='http://www.w3.org/2005/Atom'/>"),
          feedOf("<item a='1' a='2'/>"), feedOf("<item></other>"), feedOf("&unknown;"), feedOf("\x01"), feedOf("\xFF\xFE"),
          feedOf("<unbound:item/>"), std::string("<rss>\0</rss>", 12)}) {
        EXPECT_EQ(count(text), -1) << text;
    }
}

TEST(FeedText, ADocumentTypeIsRefusedAndWithItEntities) {
    EXPECT_EQ(count("<!DOCTYPE rss><rss/>"), -1);
    EXPECT_EQ(count("<!DOCTYPE rss [<!ENTITY a 'b'>]><rss><channel>&a;</channel></rss>"), -1);
    EXPECT_EQ(count("<!DOCTYPE rss SYSTEM 'file:///etc/passwd'><rss/>"), -1);
}

TEST(FeedText, WhatIsTooLongIsNoItemAndMoreThanAThousandAreNotRead) {
    EXPECT_EQ(count(feedOf(item("<link>" + std::string(2048, 'a') + "</link>"))), 1);
    EXPECT_EQ(count(feedOf(item("<link>" + std::string(2049, 'a') + "</link>"))), 0);
    EXPECT_EQ(count(feedOf(item("<sparkle:version>" + std::string(3000000, '1') + "</sparkle:version>"))), 0);
    std::string many;
    for (int i = 0; i < 1001; ++i) many += item("");
    EXPECT_EQ(count(feedOf(many)), 1000);
}

std::string repeat(const std::string& text, std::size_t length) {
    std::string repeated;
    while (repeated.size() < length) repeated += text;
    return repeated;
}

/// Attributes with names of their own.
std::string attributes(std::size_t length, const std::string& prefix) {
    std::string text;
    for (int i = 0; text.size() < length; ++i) text += " " + prefix + std::to_string(i) + "='x'";
    return text;
}

/// Texts of 4 MiB. Some readers take minutes for one of them, or all memory.
TEST(FeedText, WhateverAFeedContainsItIsReadOrRefusedInTime) {
    constexpr std::size_t most = std::size_t{4} << 20;
    const std::pair<const char*, std::string> hostile[] = {
        {"attributes", feedOf("<item" + attributes(most, "a") + "/>")},
        {"attributes of a namespace", feedOf("<item" + attributes(most, "sparkle:a") + "/>")},
        {"namespaces", feedOf("<item" + attributes(most, "xmlns:a") + "/>")},
        {"one attribute", feedOf("<item a='" + std::string(most, 'x') + "'/>")},
        {"one name", feedOf("<" + std::string(most, 'x') + "/>")},
        {"depth", repeat("<a>", most)},
        {"depth in the feed", feedOf(repeat("<a>", most))},
        {"siblings", feedOf(repeat("<a/>", most))},
        {"items", feedOf(repeat(item("<link>a</link>"), most))},
        {"fields", feedOf(item(repeat("<link>a</link>", most)))},
        {"enclosures", feedOf(item(repeat(enclosure, most)))},
        {"references", feedOf(item("<link>" + repeat("&amp;", most) + "</link>"))},
        {"one text", feedOf(item("<link>" + std::string(most, 'x') + "</link>"))},
        {"one comment", feedOf("<!--" + std::string(most, 'x'))},
        {"comments", feedOf(repeat("<!---->", most))},
        {"brackets", feedOf(item("<link>" + repeat("]]", most) + "</link>"))},
        {"instructions", feedOf(repeat("<?a b?>", most))},
        {"less-than signs", std::string(most, '<')},
        {"entities", "<!DOCTYPE rss [<!ENTITY a 'b'>" + repeat("<!ENTITY c '&a;&a;'>", most) + "]><rss/>"}};
    for (const auto& [name, text] : hostile) {
        const std::clock_t begin = std::clock();
        (void)count(text);
        EXPECT_LT(std::clock() - begin, 5 * CLOCKS_PER_SEC) << name;
    }
}

}  // namespace
}  // namespace ovin
