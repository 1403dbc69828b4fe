#include "Tallyglass/Desktop/Appcast.h"
#include "Tallyglass/Desktop/Version.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

QByteArray feed(const QByteArray& items) {
    return "<?xml version='1.0'?><rss version='2.0' xmlns:v='http://example.org/versions'><channel>"
           "<title>Versions</title>" +
           items + "</channel></rss>";
}

QList<AppcastItem> itemsOf(const QByteArray& items) {
    const auto parsed = parseAppcast(feed(items), "linux");
    EXPECT_TRUE(parsed.has_value());
    return parsed.value_or(QList<AppcastItem>());
}

TEST(Appcast, takesVersionsFromElementsOrFromTheEnclosure) {
    const auto items = itemsOf(
        "<item><title>New</title><link> https://example.org/new </link><v:version>12</v:version>"
        "<v:shortVersionString>1.2</v:shortVersionString><enclosure "
        "url='https://example.org/new.zip'/></item>"
        "<item><description><b>Old</b></description>"
        "<enclosure url='https://example.org/old.zip' v:version='11' v:shortVersionString='1.1'/></item>"
        "<item><v:version>10</v:version></item>");

    EXPECT_THAT(items, ElementsAre(AppcastItem{"12", "1.2", QUrl("https://example.org/new")},
                                   AppcastItem{"11", "1.1", QUrl("https://example.org/old.zip")},
                                   AppcastItem{"10", "10", QUrl()}));
}

TEST(Appcast, leavesOutOtherSystemsSpecialChannelsAndVersionsThatAreNone) {
    const auto items =
        itemsOf("<item><v:version>5</v:version><enclosure v:os='windows' url='https://a/w'/></item>"
                "<item><v:version>4</v:version><v:channel>beta</v:channel></item>"
                "<item><v:version>next</v:version></item>"
                "<item><version>3</version></item>"
                "<item><enclosure v:os='windows' url='https://a/w' v:version='7'/>"
                "<enclosure v:os='Linux' url='https://a/l' v:version='2'/></item>");

    EXPECT_THAT(items, ElementsAre(AppcastItem{"2", "2", QUrl("https://a/l")}));
}

TEST(Appcast, givesNoLinkThatIsNotHTTPS) {
    for (const QByteArray link :
         {"http://example.org/", "javascript:alert(1)", "file:///bin/sh", "https://", "x"}) {
        const auto items = itemsOf("<item><v:version>2</v:version><link>" + link + "</link><enclosure url='" +
                                   link + "'/></item>");
        EXPECT_THAT(items, ElementsAre(AppcastItem{"2", "2", QUrl()})) << link.constData();
    }
}

TEST(Appcast, givesNoNameThatCouldPassForWords) {
    const auto items =
        itemsOf("<item><v:version>2</v:version><v:shortVersionString>2 &lt;b&gt;call us&lt;/b&gt;"
                "</v:shortVersionString></item>"
                "<item><v:version>3" +
                QByteArray(100, '0') + "</v:version></item>");
    EXPECT_THAT(items, ElementsAre(AppcastItem{"2", "2", QUrl()}));
}

TEST(Appcast, refusesWhatIsNoFeed) {
    for (const QByteArray& text : {
             QByteArray(),
             QByteArray("<html><body>Sign in to this network</body></html>"),
             QByteArray("{\"version\": 3}"),
             feed("<item><v:version>2</v:version>"),
             feed("<item><u:version>2</u:version></item>"),
             feed("<item><v:version>2</v:version></item>").chopped(5),
             QByteArray("<!DOCTYPE rss [<!ENTITY a '2'>]><rss><channel/></rss>"),
             QByteArray("<rss>\xFF\xFE</rss>"),
         })
        EXPECT_FALSE(parseAppcast(text, "linux").has_value()) << text.constData();
}

TEST(Appcast, survivesDeepNesting) {
    constexpr int depth = 100000;
    const auto text = feed("<item>" + QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth) +
                           "<v:version>2</v:version></item>");
    EXPECT_EQ(parseAppcast(text, "linux").value_or(QList<AppcastItem>()).size(), 1);
}

TEST(Appcast, findsTheNewestThatIsNewer) {
    const QList<AppcastItem> items{{"1.9", "", {}}, {"1.10", "", {}}, {"1.10b2", "", {}}};

    EXPECT_EQ(newestAfter("1.9.5", items)->version, "1.10");
    EXPECT_FALSE(newestAfter("1.10.0", items).has_value());
    EXPECT_FALSE(newestAfter("0.1", {}).has_value());
}

TEST(Version, comparesByNumbersAndWords) {
    const QList<QString> ascending{"0",        "0.1",   "1.0a",  "1.0b2", "1.0b10",
                                   "1.0-rc.1", "1.0",   "1.0.1", "1.0.9", "1.0.10",
                                   "1.2.9a",   "1.2.9", "2",     "10.0",  "99999999999999999999999"};
    for (qsizetype i = 0; i < ascending.size(); ++i)
        for (qsizetype j = 0; j < ascending.size(); ++j)
            EXPECT_EQ(compareVersions(ascending[i], ascending[j]), std::weak_ordering(i <=> j))
                << qPrintable(ascending[i] + " and " + ascending[j]);
}

TEST(Version, takesDifferentSpellingsOfOneVersionAsEqual) {
    for (const auto& [one, other] : {std::pair{"1", "1.0.0"},
                                     {"1.02", "1.2"},
                                     {"1.2+a", "1.2+b"},
                                     {"1.2RC", "1.2rc"},
                                     {"", "0"},
                                     {"1-b2", "1.b2"}})
        EXPECT_EQ(compareVersions(QString(one), QString(other)), std::weak_ordering::equivalent) << one;
}

} // namespace
} // namespace tallyglass
