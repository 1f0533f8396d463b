#include "platform/linux/updates/QtUpdateFeed.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <optional>
#include <utility>

#include "platform/linux/updates/FeedText.h"

namespace ovin {
namespace {

constexpr qint64 longestFeed = qint64{4} << 20;
/// When so much has not been read, the server has to wait.
constexpr qint64 bufferSize = qint64{1} << 20;
constexpr int mostRedirections = 10;

bool isSafe(const QUrl& url) {
    if (!url.isValid() || url.host().isEmpty()) return false;
    if (url.scheme() == QLatin1String("https")) return true;
    const bool isThisMachine = url.host() == QLatin1String("127.0.0.1") || url.host() == QLatin1String("localhost");
    return isThisMachine && url.scheme() == QLatin1String("http");
}

QNetworkRequest requestFor(const QUrl& url) {
    QNetworkRequest request(url);
    // Redirections are followed here: each is checked first, and the toolkit (Qt 6.4) leaks memory when its network access
    // is destroyed soon after having followed one.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // No compression, because a few bytes could become gigabytes.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setHeader(QNetworkRequest::UserAgentHeader, "Ovin");
    return request;
}

/// What a server answers: a text, another address, or nothing of use.
using Response = std::variant<QByteArray, QUrl, FeedFailure>;

Response ask(QNetworkAccessManager& network, const QUrl& url, QDeadlineTimer deadline) {
    QEventLoop loop;
    const std::unique_ptr<QNetworkReply> reply(network.get(requestFor(url)));
    QByteArray text;
    std::optional<FeedFailure> failure;
    const auto fail = [&](FeedFailure why) {
        failure = why;
        loop.quit();
    };
    const auto readAvailable = [&] {
        text += reply->readAll();
        if (text.size() > longestFeed) fail(FeedFailure::unusable);
    };
    reply->setReadBufferSize(bufferSize);
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &loop, readAvailable);
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(std::chrono::milliseconds(deadline.remainingTime()), &loop, [&] { fail(FeedFailure::unreachable); });
    if (!reply->isFinished()) loop.exec();
    readAvailable();
    if (failure) return *failure;
    if (reply->error() == QNetworkReply::SslHandshakeFailedError) return FeedFailure::insecure;
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!status.isValid()) return FeedFailure::unreachable;
    if (!reply->isFinished() || reply->error() != QNetworkReply::NoError) return FeedFailure::unusable;
    const QUrl elsewhere = reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (!elsewhere.isEmpty()) return url.resolved(elsewhere);
    if (status.toInt() != 200) return FeedFailure::unusable;
    return text;
}

UpdateFeed::Answer readFrom(const std::string& address, std::chrono::milliseconds patience) {
    const QDeadlineTimer deadline(patience);
    QNetworkAccessManager network;
    QUrl url(QString::fromStdString(address), QUrl::StrictMode);
    if (!isSafe(url)) return FeedFailure::insecure;
    for (int redirections = 0; redirections <= mostRedirections; ++redirections) {
        const Response response = ask(network, url, deadline);
        if (const auto* const failure = std::get_if<FeedFailure>(&response)) return *failure;
        if (const auto* const text = std::get_if<QByteArray>(&response)) {
            auto items = readFeed({text->constData(), static_cast<std::size_t>(text->size())});
            if (!items) return FeedFailure::unusable;
            return *std::move(items);
        }
        const auto& elsewhere = std::get<QUrl>(response);
        const bool isDowngrade = url.scheme() == QLatin1String("https") && elsewhere.scheme() != QLatin1String("https");
        if (isDowngrade || !isSafe(elsewhere)) return FeedFailure::insecure;
        url = elsewhere;
    }
    return FeedFailure::unusable;
}

class ThreadReading final : public UpdateFeed::Reading {
public:
    ThreadReading(const std::string& url, std::chrono::milliseconds patience,
                  std::function<void(UpdateFeed::Answer)> finished)
        : finished_(std::move(finished)),
          thread_(QThread::create([this, url, patience] { answer_ = readFrom(url, patience); })) {
        QObject::connect(thread_.get(), &QThread::finished, &receiver_, [this] { tell(); });
        thread_->start();
        if (thread_->isRunning() || thread_->isFinished()) return;
        // Without a further thread no server is reached; the answer is `unreachable`.
        QMetaObject::invokeMethod(
            &receiver_, [this] { tell(); }, Qt::QueuedConnection);
    }
    ~ThreadReading() override {
        // Ends the thread's event loop, also one that it has not entered yet.
        thread_->quit();
        thread_->wait();
    }

private:
    /// Runs from a copy, because the handler may destroy this object, and itself with it.
    void tell() {
        const auto finished = finished_;
        finished(std::move(answer_));
    }

    const std::function<void(UpdateFeed::Answer)> finished_;
    /// Belongs to the thread until that has finished.
    UpdateFeed::Answer answer_ = FeedFailure::unreachable;
    const std::unique_ptr<QThread> thread_;
    QObject receiver_;
};

}  // namespace

std::unique_ptr<UpdateFeed::Reading> QtUpdateFeed::read(const std::string& url, std::function<void(Answer)> finished) {
    return std::make_unique<ThreadReading>(url, patience_, std::move(finished));
}

}  // namespace ovin
