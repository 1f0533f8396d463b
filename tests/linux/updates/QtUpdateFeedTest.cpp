#include "platform/linux/updates/QtUpdateFeed.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "platform/linux/updates/LoadedUpdateFeed.h"
#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

constexpr qint64 bound = 20000;  // milliseconds; reached only by what is broken

std::string feedOf(const std::string& content) {
    return "<rss xmlns:sparkle='http://www.andymatuschak.org/xml-namespaces/sparkle'><channel>" + content +
           "<item><sparkle:version>2</sparkle:version><enclosure sparkle:os='linux'/></item></channel></rss>";
}

/// Beside a real web server; each test runs in a process of its own.
class QtUpdateFeedTest : public testing::Test {
protected:
    QtUpdateFeedTest() {
        write("feed", feedOf(""));
        server_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        server_.start(OVIN_PYTHON, {"-B", OVIN_FEED_SERVER, QString::fromStdString(folder_.path().string())});
        while (!server_.canReadLine() && server_.waitForReadyRead(static_cast<int>(bound))) continue;
        const QList<QByteArray> ports = server_.readLine().trimmed().split(' ');
        if (ports.size() != 3) {
            ADD_FAILURE() << "the server does not start: " << server_.errorString().toStdString() << server_.state();
            return;
        }
        plain_ = "http://127.0.0.1:" + ports[0].toStdString();
        safe_ = "https://127.0.0.1:" + ports[1].toStdString();
        mismatched_ = "https://127.0.0.2:" + ports[2].toStdString();
    }
    ~QtUpdateFeedTest() override {
        server_.closeWriteChannel();
        server_.waitForFinished(static_cast<int>(bound));
    }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_.path() / name, std::ios::binary) << text;
    }

    /// As if an authority had issued the server's certificate.
    void trustServer() const {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificates(QString::fromStdString((folder_.path() / "certificate.pem").string()));
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    template <typename Condition>
    static bool becomes(const Condition& condition) {
        QElapsedTimer timer;
        timer.start();
        while (!condition()) {
            if (timer.elapsed() > bound) return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 100);
        }
        return true;
    }

    UpdateFeed::Answer read(const std::string& url, std::chrono::milliseconds patience = 30s) {
        QtUpdateFeed feed(patience);
        return read(feed, url);
    }
    static UpdateFeed::Answer read(UpdateFeed& feed, const std::string& url) {
        std::optional<UpdateFeed::Answer> result;
        const auto reading = feed.read(url, [&](UpdateFeed::Answer answer) { result = std::move(answer); });
        EXPECT_FALSE(result.has_value()) << "it called back within the call";
        EXPECT_TRUE(becomes([&] { return result.has_value(); })) << url;
        return result.value_or(std::vector<FeedItem>());
    }
    void expectItem(const std::string& url) {
        EXPECT_EQ(read(url), UpdateFeed::Answer(std::vector<FeedItem>{{"2", "", ""}})) << url;
    }
    void expectFailure(const std::string& url, FeedFailure failure) {
        EXPECT_EQ(read(url), UpdateFeed::Answer(failure)) << url;
    }
    /// How much the server has sent of an answer that never ends, in megabytes.
    int sent() {
        const auto file = folder_.path() / "sent";
        EXPECT_TRUE(becomes([&] { return std::filesystem::exists(file) && std::filesystem::file_size(file) > 0; }));
        int megabytes = 1000;
        std::ifstream(file) >> megabytes;
        std::filesystem::remove(file);
        return megabytes;
    }

    int argumentCount_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    const QCoreApplication application_{argumentCount_, arguments_};
    const TemporaryFolder folder_;
    QProcess server_;
    std::string plain_;
    std::string safe_;
    std::string mismatched_;
};

TEST_F(QtUpdateFeedTest, AFeedIsReadOverHttpsAndFromThisMachine) {
    trustServer();
    expectItem(safe_ + "/feed");
    expectItem(plain_ + "/feed");
}

TEST_F(QtUpdateFeedTest, TheModuleReadsAsWell) {
    LoadedUpdateFeed feed(OVIN_UPDATE_FEED, OVIN_VERSION);
    EXPECT_EQ(read(feed, plain_ + "/feed"), UpdateFeed::Answer(std::vector<FeedItem>{{"2", "", ""}}));
    EXPECT_EQ(read(feed, plain_ + "/none"), UpdateFeed::Answer(FeedFailure::unusable));
}

TEST_F(QtUpdateFeedTest, AModuleOfAnotherVersionReachesNobody) {
    LoadedUpdateFeed feed(OVIN_UPDATE_FEED, "0.0.1");
    EXPECT_EQ(read(feed, plain_ + "/feed"), UpdateFeed::Answer(FeedFailure::unreachable));
}

TEST_F(QtUpdateFeedTest, WithoutTheModuleNobodyIsReached) {
    LoadedUpdateFeed feed("/nowhere/update-feed.so", OVIN_VERSION);
    EXPECT_EQ(read(feed, plain_ + "/feed"), UpdateFeed::Answer(FeedFailure::unreachable));
    // One that is cancelled says nothing.
    (void)feed.read(plain_ + "/feed", [](const auto&) { ADD_FAILURE() << "it says something"; });
    QCoreApplication::processEvents();
}

TEST_F(QtUpdateFeedTest, EverythingElseThatIsPlainIsRefusedBeforeAnythingIsSent) {
    for (const char* url : {"http://ovin.example/a", "http://127.0.0.1.example/a", "http://127.0.0.1@ovin.example/a",
                            "http://127.0.0.2/a", "ftp://localhost/a", "file:///etc/passwd", "file://localhost/etc/passwd",
                            "data:text/plain,a", "qrc:/a", "", "https://", "https:///a", "localhost/a"}) {
        expectFailure(url, FeedFailure::insecure);
    }
}

TEST_F(QtUpdateFeedTest, ACertificateThatNobodyHasIssuedOrOfAnotherHostIsRefused) {
    expectFailure(safe_ + "/feed", FeedFailure::insecure);
    trustServer();
    expectFailure(mismatched_ + "/feed", FeedFailure::insecure);
}

TEST_F(QtUpdateFeedTest, OnlySafeRedirectionsAreFollowed) {
    trustServer();
    expectItem(safe_ + "/_redirect-well");
    expectItem(plain_ + "/_redirect-well");
    expectItem(plain_ + "/_redirect-to-tls");
    expectFailure(safe_ + "/_redirect-to-plain", FeedFailure::insecure);
    expectFailure(safe_ + "/_redirect-to-remote", FeedFailure::insecure);
    expectFailure(plain_ + "/_redirect-to-remote", FeedFailure::insecure);
    expectFailure(plain_ + "/_redirect-with-credentials", FeedFailure::insecure);
    EXPECT_TRUE(std::holds_alternative<FeedFailure>(read(plain_ + "/_redirect-to-file")));
    expectFailure(plain_ + "/_redirect-for-ever", FeedFailure::unusable);
}

TEST_F(QtUpdateFeedTest, AMissingServerIsUnreachable) {
    expectFailure("http://127.0.0.1:1/feed", FeedFailure::unreachable);
    expectFailure("https://host.invalid/feed", FeedFailure::unreachable);
    expectFailure(plain_ + "/_no-answer", FeedFailure::unreachable);
}

TEST_F(QtUpdateFeedTest, AnswersThatAreNoFeedAreOfNoUse) {
    write("text", "no feed");
    for (const char* path : {"/missing", "/text", "/_error", "/_nothing-new", "/_part", "/_log-in", "/_cut-off",
                             "/_cut-off-without-length", "/_compressed", "/_redirect-nowhere", "/_longer-than-announced"}) {
        expectFailure(plain_ + path, FeedFailure::unusable);
    }
    for (const char* path : {"/_no-http", "/_redirect-to-garbage", "/_chunk-of-nonsense", "/_chunk-below-zero",
                             "/_chunks-without-end", "/_length-below-zero", "/_two-lengths"}) {
        EXPECT_TRUE(std::holds_alternative<FeedFailure>(read(plain_ + path))) << path;
    }
}

TEST_F(QtUpdateFeedTest, WhatIsTooLongIsGivenUpEarly) {
    write("longest", feedOf(std::string((std::size_t{4} << 20) - feedOf("").size(), ' ')));
    expectItem(plain_ + "/longest");
    write("longer", feedOf(std::string((std::size_t{4} << 20) - feedOf("").size() + 1, ' ')));
    expectFailure(plain_ + "/longer", FeedFailure::unusable);
    expectFailure(plain_ + "/_endless", FeedFailure::unusable);
    EXPECT_LT(sent(), 50) << "the rest was taken as well";
    expectFailure(plain_ + "/_endless-chunks", FeedFailure::unusable);
    EXPECT_LT(sent(), 50) << "the rest was taken as well";
}

TEST_F(QtUpdateFeedTest, WhoeverIsNotDoneInTimeIsGivenUp) {
    for (const char* path : {"/_slow", "/_slow-headers", "/_steady", "/_redirect-slowly"})
        EXPECT_EQ(read(plain_ + path, 700ms), UpdateFeed::Answer(FeedFailure::unreachable)) << path;
}

TEST_F(QtUpdateFeedTest, NobodyIsAskedToCompressAndNoCookieIsSentBack) {
    for (int i = 0; i < 2; ++i) (void)read(plain_ + "/_asked-for");
    std::ifstream file(folder_.path() / "asked");
    const std::string headers(std::istreambuf_iterator<char>(file), {});
    EXPECT_NE(headers.find("Accept-Encoding: identity"), std::string::npos) << headers;
    EXPECT_EQ(headers.find("Cookie"), std::string::npos) << headers;
}

TEST_F(QtUpdateFeedTest, AReadingThatIsDestroyedEndsAtOnceAndSilently) {
    QElapsedTimer timer;
    timer.start();
    for (const char* path : {"/_slow", "/_redirect-slowly"}) {
        for (const auto moment : {0ms, 1ms, 20ms, 400ms}) {
            auto reading = QtUpdateFeed().read(plain_ + path, [](const auto&) { ADD_FAILURE() << "it says something"; });
            const auto end = std::chrono::steady_clock::now() + moment;
            becomes([&] { return std::chrono::steady_clock::now() >= end; });
            reading.reset();
        }
    }
    EXPECT_LT(timer.elapsed(), bound / 4);
    QCoreApplication::processEvents();
}

/// The time that passes for this thread, without the time in which it could run but other programs had the processors.
std::chrono::nanoseconds timeOfThread() {
    const auto waited = [] {
        std::int64_t times[2] = {0, 0};
        std::ifstream("/proc/thread-self/schedstat") >> times[0] >> times[1];
        return std::chrono::nanoseconds(times[1]);
    };
    while (true) {
        const std::chrono::nanoseconds before = waited();
        const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
        if (waited() == before) return now - before;
    }
}

/// The longest time for which the event loop did nothing else during some work.
std::chrono::milliseconds longestSilence(const std::function<void()>& work) {
    QTimer heartbeat;
    std::chrono::nanoseconds last = timeOfThread();
    std::chrono::nanoseconds longest{0};
    const auto beat = [&] {
        const std::chrono::nanoseconds now = timeOfThread();
        longest = std::max(longest, now - std::exchange(last, now));
    };
    QObject::connect(&heartbeat, &QTimer::timeout, &heartbeat, beat);
    heartbeat.setTimerType(Qt::PreciseTimer);
    heartbeat.start(1ms);
    work();
    beat();
    return std::chrono::duration_cast<std::chrono::milliseconds>(longest);
}

TEST_F(QtUpdateFeedTest, ASilenceIsMeasured) {
    EXPECT_GE(longestSilence([] { std::this_thread::sleep_for(50ms); }), 50ms);
    EXPECT_GE(longestSilence([] {
                  const std::clock_t end = std::clock() + CLOCKS_PER_SEC / 20;
                  while (std::clock() < end) continue;
              }),
              40ms);
}

TEST_F(QtUpdateFeedTest, WhateverAFeedContainsTheMainThreadGoesOn) {
    const auto attributes = [](int count) {
        std::string text;
        for (int i = 0; i < count; ++i) text += " a" + std::to_string(i) + "='x'";
        return text;
    };
    constexpr std::size_t most = std::size_t{4} << 20;
    std::string items;
    while (items.size() < most - 1000) items += "<item><link>a</link><enclosure sparkle:os='linux'/></item>";
    const std::pair<const char*, std::string> hostile[] = {{"attributes", feedOf("<a" + attributes(50000) + "/>")},
                                                           {"most-attributes", feedOf("<a" + attributes(350000) + "/>")},
                                                           {"items", feedOf(items)},
                                                           {"depth", std::string(most, '<')}};
    (void)read(plain_ + "/feed");  // loads what the first request of all loads
    for (const auto& [name, text] : hostile) {
        ASSERT_LE(text.size(), most) << name;
        write(name, text);
        auto silence = 20ms;
        // A thread that has lost its processor may hold a lock of the system's that the main thread needs. What the feed
        // itself holds up, it holds up each time.
        for (int reading = 0; reading < 3 && silence >= 20ms; ++reading) {
            const std::clock_t begin = std::clock();
            silence = longestSilence([&, url = plain_ + "/" + name] { (void)read(url); });
            EXPECT_LT(std::clock() - begin, 5 * CLOCKS_PER_SEC) << name;
        }
        EXPECT_LT(silence, 20ms) << name;
        RecordProperty(name, static_cast<int>(silence.count()));
    }
}

}  // namespace
}  // namespace ovin
