#include "platform/linux/updates/QtTransfer.h"

#include <QNetworkRequest>
#include <chrono>
#include <utility>

#include "platform/linux/updates/QtDownloads.h"

namespace ovin {
namespace {

constexpr std::chrono::seconds longestSilence{30};
/// What has to come of a file before patience ends: much less than the slowest of connections brings.
constexpr std::uint64_t leastProgress = 16384;
constexpr qint64 bufferSize = qint64{1} << 20;
constexpr int mostRedirections = 10;

QNetworkRequest request(const QUrl& url) {
    QNetworkRequest request(url);
    // Redirections are looked at one by one.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirections);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setTransferTimeout(static_cast<int>(std::chrono::milliseconds(longestSilence).count()));
    // A few bytes could become gigabytes.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setHeader(QNetworkRequest::UserAgentHeader, "Ovin");
    return request;
}

bool isHttpError(QNetworkReply::NetworkError error) {
    return error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownServerError;
}

}  // namespace

QtTransfer::QtTransfer(QNetworkAccessManager& network, const Downloads::Source& source, Bounds bounds, Handlers handlers)
    : source_(source), bounds_(bounds), handlers_(std::move(handlers)) {
    QObject::connect(&watch_, &QTimer::timeout, &receiver_, [this] { checkProgress(); });
    watch_.start(bounds_.patience);
    const QUrl url(QString::fromStdString(source.url), QUrl::StrictMode);
    if (isSafeSource(url, source.mayBePlainOnThisMachine)) {
        begin(network, url);
        return;
    }
    QMetaObject::invokeMethod(
        &receiver_, [this] { finish(DownloadFailure::insecure); }, Qt::QueuedConnection);
}

QtTransfer::~QtTransfer() {
    isFinished_ = true;
    if (reply_ == nullptr) return;
    reply_->disconnect(&receiver_);
    reply_->abort();
    reply_->deleteLater();
}

void QtTransfer::begin(QNetworkAccessManager& network, const QUrl& url) {
    url_ = url;
    reply_ = network.get(request(url));
    reply_->setReadBufferSize(bufferSize);
    QObject::connect(reply_, &QNetworkReply::redirected, &receiver_, [this](const QUrl& to) { redirected(to); });
    QObject::connect(reply_, &QNetworkReply::metaDataChanged, &receiver_, [this] { checkAnnouncedLength(); });
    QObject::connect(reply_, &QNetworkReply::readyRead, &receiver_, [this] { readAvailable(); });
    QObject::connect(reply_, &QNetworkReply::finished, &receiver_, [this] { replyFinished(); });
}

void QtTransfer::redirected(const QUrl& url) {
    // The reply has the new address already.
    const bool isDowngrade = url_.scheme() == QLatin1String("https") && url.scheme() != QLatin1String("https");
    url_ = url;
    if (isDowngrade || !isSafeSource(url, source_.mayBePlainOnThisMachine)) return finish(DownloadFailure::insecure);
    Q_EMIT reply_->redirectAllowed();
}

void QtTransfer::checkAnnouncedLength() {
    if (isFinished_ || reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != 200) return;
    bool isKnown = false;
    const qulonglong length = reply_->header(QNetworkRequest::ContentLengthHeader).toULongLong(&isKnown);
    if (!isKnown) return;
    if (length > bounds_.longest) return finish(DownloadFailure::tooLong);
    if (bounds_.isExact && length < bounds_.longest) finish(DownloadFailure::tooShort);
}

void QtTransfer::checkProgress() {
    const bool isWorthIt = bounds_.isExact && received_ - receivedBefore_ >= leastProgress;
    receivedBefore_ = received_;
    if (!isWorthIt) finish(DownloadFailure::unreachable);
}

void QtTransfer::readAvailable() {
    // What an error or a redirection has to say besides is nobody's business.
    if (isFinished_ || reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != 200) return;
    const QByteArray bytes = reply_->readAll();
    if (bytes.isEmpty()) return;
    received_ += static_cast<std::uint64_t>(bytes.size());
    if (received_ > bounds_.longest) return finish(DownloadFailure::tooLong);
    const auto failure = handlers_.received({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    if (failure) finish(failure);
}

void QtTransfer::replyFinished() {
    if (isFinished_) return;
    if (const auto failure = failureOfReply()) return finish(failure);
    readAvailable();
    if (isFinished_) return;
    finish(bounds_.isExact && received_ < bounds_.longest ? std::optional(DownloadFailure::tooShort) : std::nullopt);
}

std::optional<DownloadFailure> QtTransfer::failureOfReply() const {
    const QNetworkReply::NetworkError error = reply_->error();
    const QVariant status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (error == QNetworkReply::NoError) {
        return status.toInt() == 200 ? std::nullopt : std::optional(DownloadFailure::refused);
    }
    if (error == QNetworkReply::SslHandshakeFailedError) return DownloadFailure::untrusted;
    if (error == QNetworkReply::InsecureRedirectError) return DownloadFailure::insecure;
    if (error == QNetworkReply::TooManyRedirectsError || isHttpError(error)) return DownloadFailure::refused;
    // The server has answered, and then the connection broke.
    if (status.toInt() == 200) return DownloadFailure::tooShort;
    return DownloadFailure::unreachable;
}

void QtTransfer::finish(std::optional<DownloadFailure> failure) {
    if (isFinished_) return;
    isFinished_ = true;
    watch_.stop();
    if (reply_ != nullptr && reply_->isRunning()) reply_->abort();
    // The handler goes with this object, which it may destroy.
    const auto finished = handlers_.finished;
    finished(failure);
}

}  // namespace ovin
