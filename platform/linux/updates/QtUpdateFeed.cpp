#include "platform/linux/updates/QtUpdateFeed.h"

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
    // Each redirection is checked before it is followed.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirections);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // No compression, because a few bytes could become gigabytes.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setHeader(QNetworkRequest::UserAgentHeader, "Ovin");
    return request;
}

/// One request, which the constructor carries out on its thread.
class Request {
public:
    Request(const QUrl& url, std::chrono::milliseconds patience) : url_(url), reply_(network_.get(requestFor(url))) {
        reply_->setReadBufferSize(bufferSize);
        QObject::connect(reply_, &QNetworkReply::redirected, &loop_, [this](const QUrl& to) { redirected(to); });
        QObject::connect(reply_, &QNetworkReply::readyRead, &loop_, [this] { readAvailable(); });
        QObject::connect(reply_, &QNetworkReply::finished, &loop_, &QEventLoop::quit);
        QTimer::singleShot(patience, &loop_, [this] { fail(FeedFailure::unreachable); });
        if (!reply_->isFinished()) loop_.exec();
        readAvailable();
    }

    [[nodiscard]] std::variant<QByteArray, FeedFailure> answer() {
        if (failure_) return *failure_;
        const QNetworkReply::NetworkError error = reply_->error();
        if (error == QNetworkReply::SslHandshakeFailedError || error == QNetworkReply::InsecureRedirectError)
            return FeedFailure::insecure;
        const QVariant status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (!status.isValid()) return FeedFailure::unreachable;
        if (!reply_->isFinished() || error != QNetworkReply::NoError || status.toInt() != 200) return FeedFailure::unusable;
        return text_;
    }

private:
    void readAvailable() {
        text_ += reply_->readAll();
        if (text_.size() > longestFeed) fail(FeedFailure::unusable);
    }

    void redirected(const QUrl& to) {
        const bool isDowngrade = url_.scheme() == QLatin1String("https") && to.scheme() != QLatin1String("https");
        if (isDowngrade || !isSafe(to)) return fail(FeedFailure::insecure);
        url_ = to;
        Q_EMIT reply_->redirectAllowed();
    }

    void fail(FeedFailure failure) {
        failure_ = failure;
        loop_.quit();
    }

    QNetworkAccessManager network_;
    QEventLoop loop_;
    /// The address after the redirections so far.
    QUrl url_;
    /// Owned by the network access.
    QNetworkReply* const reply_;
    QByteArray text_;
    std::optional<FeedFailure> failure_;
};

UpdateFeed::Answer readFrom(const std::string& address, std::chrono::milliseconds patience) {
    const QUrl url(QString::fromStdString(address), QUrl::StrictMode);
    if (!isSafe(url)) return FeedFailure::insecure;
    const auto answer = Request(url, patience).answer();
    if (const auto* const failure = std::get_if<FeedFailure>(&answer)) return *failure;
    const auto& text = std::get<QByteArray>(answer);
    auto items = readFeed({text.constData(), static_cast<std::size_t>(text.size())});
    if (!items) return FeedFailure::unusable;
    return *std::move(items);
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
