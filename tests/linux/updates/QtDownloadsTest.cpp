#include "platform/linux/updates/QtDownloads.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QUrl>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "platform/linux/system/TemporaryFile.h"
#include "platform/linux/updates/QtTransfer.h"
#include "tests/support/TemporaryFolder.h"

namespace ovin {
namespace {

constexpr qint64 bound = 20000;  // milliseconds; reached only by what is broken
const std::string content(300000, 'c');

/// Beside a real web server; each test runs in a process of its own.
class QtDownloadsTest : public testing::Test {
protected:
    QtDownloadsTest() {
        std::ofstream(folder_.path() / "file") << content;
        server_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        server_.start(OVIN_PYTHON, {"-B", OVIN_FEED_SERVER, QString::fromStdString(folder_.path().string())});
        while (!server_.canReadLine() && server_.waitForReadyRead(static_cast<int>(bound))) continue;
        const QList<QByteArray> ports = server_.readLine().trimmed().split(' ');
        if (ports.size() != 2) {
            ADD_FAILURE() << "the server does not start: " << server_.errorString().toStdString() << server_.state();
            return;
        }
        plain_ = "http://127.0.0.1:" + ports[0].toStdString();
        safe_ = "https://localhost:" + ports[1].toStdString();
        mismatched_ = "https://127.0.0.1:" + ports[1].toStdString();
    }
    ~QtDownloadsTest() override {
        transfer_.reset();
        server_.closeWriteChannel();
        server_.waitForFinished(static_cast<int>(bound));
        EXPECT_TRUE(std::filesystem::is_empty(downloadsFolder())) << "something remains";
    }

    /// As if an authority had issued the server's certificate.
    void trustServer() const {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificates(QString::fromStdString((folder_.path() / "certificate.pem").string()));
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    [[nodiscard]] std::filesystem::path downloadsFolder() const {
        std::filesystem::create_directories(folder_.path() / "cache");
        return folder_.path() / "cache";
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

    /// What comes of reading an address: the text, or a failure.
    Downloads::Text read(const std::string& url, std::size_t longest = content.size()) {
        std::optional<Downloads::Text> result;
        transfer_ = downloads_.read({url, true}, longest, [&](Downloads::Text text) { result = std::move(text); });
        EXPECT_FALSE(result.has_value()) << "it called back within the call";
        EXPECT_TRUE(becomes([&] { return result.has_value(); })) << url;
        transfer_.reset();
        return result.value_or(std::string("nothing"));
    }
    void expectText(const std::string& url) {
        const auto result = read(url);
        ASSERT_TRUE(std::holds_alternative<std::string>(result))
            << url << ": failure " << static_cast<int>(std::get<DownloadFailure>(result));
        EXPECT_EQ(std::get<std::string>(result), content) << url;
    }
    void expectFailure(const std::string& url, DownloadFailure failure) {
        const auto result = read(url);
        ASSERT_TRUE(std::holds_alternative<DownloadFailure>(result)) << url;
        EXPECT_EQ(std::get<DownloadFailure>(result), failure) << url;
    }

    Downloads::File download(const std::string& url, std::uint64_t length) {
        std::optional<Downloads::File> result;
        received_ = 0;
        transfer_ = downloads_.download(
            {url, true}, length,
            [&](std::uint64_t count) {
                EXPECT_GT(count, received_);
                received_ = count;
            },
            [&](Downloads::File file) { result = std::move(file); });
        EXPECT_FALSE(result.has_value()) << "it called back within the call";
        EXPECT_TRUE(becomes([&] { return result.has_value(); })) << url;
        transfer_.reset();
        return result.value_or(DownloadFailure::unreachable);
    }
    void expectDownloadFailure(const std::string& url, std::uint64_t length, DownloadFailure failure) {
        const auto result = download(url, length);
        ASSERT_TRUE(std::holds_alternative<DownloadFailure>(result)) << url;
        EXPECT_EQ(std::get<DownloadFailure>(result), failure) << url;
        EXPECT_TRUE(std::filesystem::is_empty(downloadsFolder()));
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
    QtDownloads downloads_{downloadsFolder()};
    std::unique_ptr<Downloads::Transfer> transfer_;
    std::uint64_t received_ = 0;
};

TEST_F(QtDownloadsTest, ATextIsReadOverHttps) {
    trustServer();
    expectText(safe_ + "/file");
}

TEST_F(QtDownloadsTest, ATestFeedOnThisMachineMayBePlain) {
    EXPECT_EQ(std::get<std::string>(read(plain_ + "/file")), content);
}

TEST_F(QtDownloadsTest, EverythingElseThatIsPlainIsRefusedBeforeAnythingIsSent) {
    EXPECT_TRUE(isSafeSource(QUrl("https://ovin.example/a"), false));
    EXPECT_TRUE(isSafeSource(QUrl("http://127.0.0.1/a"), true));
    for (const char* url : {"http://ovin.example/a", "http://127.0.0.1.example/a", "http://127.0.0.1@ovin.example/a",
                            "http://127.0.0.2/a", "ftp://localhost/a", "file:///etc/passwd", "file://localhost/etc/passwd",
                            "data:text/plain,a", "qrc:/a", "", "https://", "https:///a", "localhost/a"}) {
        EXPECT_FALSE(isSafeSource(QUrl(url), true)) << url;
        expectFailure(url, DownloadFailure::insecure);
    }
    EXPECT_FALSE(isSafeSource(QUrl("http://127.0.0.1/a"), false));
    EXPECT_FALSE(isSafeSource(QUrl("http://localhost/a"), false));
}

TEST_F(QtDownloadsTest, ACertificateThatNobodyHasIssuedIsRefused) {
    expectFailure(safe_ + "/file", DownloadFailure::untrusted);
    expectDownloadFailure(safe_ + "/file", content.size(), DownloadFailure::untrusted);
}

TEST_F(QtDownloadsTest, ACertificateOfAnotherHostIsRefused) {
    trustServer();
    expectFailure(mismatched_ + "/file", DownloadFailure::untrusted);
}

TEST_F(QtDownloadsTest, ARedirectionToPlainHttpIsRefused) {
    trustServer();
    expectFailure(safe_ + "/_redirect-to-plain", DownloadFailure::insecure);
    expectFailure(safe_ + "/_redirect-to-remote", DownloadFailure::insecure);
    expectFailure(plain_ + "/_redirect-to-remote", DownloadFailure::insecure);
    expectDownloadFailure(safe_ + "/_redirect-to-plain", content.size(), DownloadFailure::insecure);
}

TEST_F(QtDownloadsTest, ARedirectionToAFileIsRefused) {
    const auto result = read(plain_ + "/_redirect-to-file");
    ASSERT_TRUE(std::holds_alternative<DownloadFailure>(result));
}

TEST_F(QtDownloadsTest, ASafeRedirectionIsFollowed) {
    trustServer();
    expectText(safe_ + "/_redirect-well");
    expectText(plain_ + "/_redirect-well");
}

TEST_F(QtDownloadsTest, RedirectionsThatNeverEndAreRefused) {
    expectFailure(plain_ + "/_redirect-for-ever", DownloadFailure::refused);
}

TEST_F(QtDownloadsTest, AnErrorOfTheServerIsNoText) {
    expectFailure(plain_ + "/missing", DownloadFailure::refused);
    expectFailure(plain_ + "/_error", DownloadFailure::refused);
    expectFailure(plain_ + "/_nothing-new", DownloadFailure::refused);
    expectDownloadFailure(plain_ + "/_error", 10, DownloadFailure::refused);
}

TEST_F(QtDownloadsTest, AMissingServerIsUnreachable) {
    expectFailure("http://127.0.0.1:1/feed", DownloadFailure::unreachable);
    expectFailure("https://host.invalid/feed", DownloadFailure::unreachable);
    expectFailure(plain_ + "/_no-answer", DownloadFailure::unreachable);
}

TEST_F(QtDownloadsTest, AHundredMegabytesAreGivenUpEarly) {
    expectFailure(plain_ + "/_endless", DownloadFailure::tooLong);
    const auto sent = folder_.path() / "sent";
    ASSERT_TRUE(becomes([&] { return std::filesystem::exists(sent) && std::filesystem::file_size(sent) > 0; }));
    int megabytes = 1000;
    std::ifstream(sent) >> megabytes;
    EXPECT_LT(megabytes, 50) << "the rest was taken as well";
}

TEST_F(QtDownloadsTest, AnAnnouncedLengthIsBelieved) {
    QElapsedTimer timer;
    timer.start();
    expectFailure(plain_ + "/_announced-too-long", DownloadFailure::tooLong);
    expectDownloadFailure(plain_ + "/_announced-too-long", 1000, DownloadFailure::tooLong);
    EXPECT_LT(timer.elapsed(), bound / 2);
}

TEST_F(QtDownloadsTest, ATextThatIsCutOffIsNoText) { expectFailure(plain_ + "/_cut-off", DownloadFailure::tooShort); }

TEST_F(QtDownloadsTest, NobodyIsAskedToCompress) {
    const auto headers = std::get<std::string>(read(plain_ + "/_asked-for"));
    EXPECT_NE(headers.find("Accept-Encoding: identity"), std::string::npos) << headers;
    EXPECT_EQ(std::get<std::string>(read(plain_ + "/_compressed")), std::string("\x1f\x8b\x08\x00", 4));
}

TEST_F(QtDownloadsTest, NoCookieIsSentBack) {
    (void)read(plain_ + "/_asked-for");
    EXPECT_EQ(std::get<std::string>(read(plain_ + "/_asked-for")).find("Cookie"), std::string::npos);
}

TEST_F(QtDownloadsTest, AFileComesInWithItsProgress) {
    const auto result = download(plain_ + "/file", content.size());
    const auto* const file =
        dynamic_cast<const TemporaryFile*>(std::get<std::shared_ptr<const DownloadedFile>>(result).get());
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(received_, content.size());
    std::string text(content.size() + 1, ' ');
    EXPECT_EQ(pread(file->descriptor(), text.data(), text.size(), 0), static_cast<ssize_t>(content.size()));
    EXPECT_EQ(text, content + " ");
}

TEST_F(QtDownloadsTest, AFileThatIsTooLongOrTooShortIsGivenUp) {
    expectDownloadFailure(plain_ + "/file", content.size() - 1, DownloadFailure::tooLong);
    expectDownloadFailure(plain_ + "/file", content.size() + 1, DownloadFailure::tooShort);
    expectDownloadFailure(plain_ + "/_endless", 5000, DownloadFailure::tooLong);
    expectDownloadFailure(plain_ + "/_cut-off", 1000, DownloadFailure::tooShort);
    expectDownloadFailure(plain_ + "/_cut-off-without-length", 1000, DownloadFailure::tooShort);
}

TEST_F(QtDownloadsTest, AFileThatThereIsNoRoomForIsNotBegun) {
    expectDownloadFailure(plain_ + "/file", std::uint64_t{1} << 60, DownloadFailure::noRoom);
    expectDownloadFailure(plain_ + "/file", ~std::uint64_t{0}, DownloadFailure::noRoom);
}

TEST_F(QtDownloadsTest, AFolderThatCannotBeMadeIsAFailure) {
    std::ofstream(folder_.path() / "no-folder") << "a file";
    QtDownloads downloads(folder_.path() / "no-folder" / "updates");
    std::optional<Downloads::File> result;
    transfer_ = downloads.download(
        {plain_ + "/file", true}, 10, [](std::uint64_t) {}, [&](Downloads::File file) { result = std::move(file); });
    EXPECT_TRUE(becomes([&] { return result.has_value(); }));
    EXPECT_EQ(std::get<DownloadFailure>(result.value()), DownloadFailure::unwritable);
}

TEST_F(QtDownloadsTest, ATransferThatIsCancelledLeavesNothingAndSaysNothing) {
    bool isFinished = false;
    transfer_ = downloads_.download(
        {plain_ + "/_slow", true}, 1000, [&](std::uint64_t count) { received_ = count; },
        [&](const Downloads::File&) { isFinished = true; });
    EXPECT_TRUE(becomes([&] { return received_ > 0; }));
    transfer_.reset();
    EXPECT_TRUE(std::filesystem::is_empty(downloadsFolder()));
    QElapsedTimer timer;
    timer.start();
    becomes([&] { return timer.elapsed() > 300; });
    EXPECT_FALSE(isFinished);
}

TEST_F(QtDownloadsTest, ChunksThatNeverEndAreGivenUpEarly) {
    expectFailure(plain_ + "/_endless-chunks", DownloadFailure::tooLong);
    expectDownloadFailure(plain_ + "/_endless-chunks", 5000, DownloadFailure::tooLong);
}

TEST_F(QtDownloadsTest, AnswersThatMakeNoSenseAreFailures) {
    trustServer();
    for (const char* path :
         {"/_no-http", "/_no-answer", "/_part", "/_log-in", "/_redirect-nowhere", "/_redirect-to-garbage"}) {
        for (const std::string& server : {plain_, safe_}) {
            EXPECT_TRUE(std::holds_alternative<DownloadFailure>(read(server + path))) << server + path;
            EXPECT_TRUE(std::holds_alternative<DownloadFailure>(download(server + path, 5))) << server + path;
            EXPECT_TRUE(std::filesystem::is_empty(downloadsFolder())) << server + path;
        }
    }
    expectFailure(plain_ + "/_redirect-with-credentials", DownloadFailure::insecure);
    expectFailure("https://localhost:" + plain_.substr(plain_.rfind(':') + 1) + "/file", DownloadFailure::untrusted);
}

/// The toolkit forgives much; what comes in is never more than what was sent, nor a file of another length.
TEST_F(QtDownloadsTest, WhatComesInBrokenChunksOrUnderWrongLengthsIsNoFileOfAnotherLength) {
    for (const char* path : {"/_chunk-of-nonsense", "/_chunk-below-zero", "/_chunks-without-end", "/_length-below-zero",
                             "/_two-lengths", "/_longer-than-announced"}) {
        const auto result = read(plain_ + path);
        const auto* const text = std::get_if<std::string>(&result);
        EXPECT_TRUE(text == nullptr || text->size() <= 5) << path << ": " << *text;
        EXPECT_TRUE(std::holds_alternative<DownloadFailure>(download(plain_ + path, 600))) << path;
        EXPECT_TRUE(std::holds_alternative<DownloadFailure>(download(plain_ + path, 2))) << path;
        EXPECT_TRUE(std::filesystem::is_empty(downloadsFolder())) << path;
    }
    EXPECT_EQ(std::get<std::string>(read(plain_ + "/_longer-than-announced")), "xxxxx");
}

TEST_F(QtDownloadsTest, ATestFeedMayLeadToASafePlace) {
    trustServer();
    expectText(plain_ + "/_redirect-to-tls");
}

/// How a transfer ends that has little patience; nothing when it brought everything.
class Impatient {
public:
    Impatient(const std::string& url, std::uint64_t length, bool isExact)
        : transfer_(network_, {url, true}, {length, isExact, std::chrono::milliseconds(700)},
                    {[](std::string_view) { return std::nullopt; },
                     [this](std::optional<DownloadFailure> failure) {
                         result_ = failure;
                         ++count_;
                     }}) {}
    [[nodiscard]] bool isOver() const { return count_ > 0; }
    [[nodiscard]] std::optional<DownloadFailure> result() const { return result_; }

private:
    QNetworkAccessManager network_;
    std::optional<DownloadFailure> result_;
    int count_ = 0;
    QtTransfer transfer_;
};

TEST_F(QtDownloadsTest, WhoBringsNextToNothingIsGivenUp) {
    for (const char* path : {"/_slow", "/_slow-headers"}) {
        for (const bool isExact : {false, true}) {
            const Impatient transfer(plain_ + path, 1000, isExact);
            EXPECT_TRUE(becomes([&] { return transfer.isOver(); })) << path;
            EXPECT_EQ(transfer.result(), DownloadFailure::unreachable) << path;
        }
    }
}

TEST_F(QtDownloadsTest, AFileThatTakesItsTimeAndComesIsNotGivenUp) {
    constexpr std::uint64_t length = std::uint64_t{65536} * 6;
    const Impatient file(plain_ + "/_steady", length, true);
    EXPECT_TRUE(becomes([&] { return file.isOver(); }));
    EXPECT_EQ(file.result(), std::nullopt);
    const Impatient text(plain_ + "/_steady", length, false);
    EXPECT_TRUE(becomes([&] { return text.isOver(); }));
    EXPECT_EQ(text.result(), DownloadFailure::unreachable) << "nothing can go on before all of it is there";
}

TEST_F(QtDownloadsTest, AHandlerMayDestroyItsTransfer) {
    bool isFinished = false;
    transfer_ = downloads_.read({plain_ + "/file", true}, content.size(), [&](const Downloads::Text&) {
        transfer_.reset();
        isFinished = true;
    });
    EXPECT_TRUE(becomes([&] { return isFinished; }));
    isFinished = false;
    transfer_ = downloads_.read({plain_ + "/_endless", true}, 10, [&](const Downloads::Text&) {
        transfer_.reset();
        isFinished = true;
    });
    EXPECT_TRUE(becomes([&] { return isFinished; }));
}

}  // namespace
}  // namespace ovin
