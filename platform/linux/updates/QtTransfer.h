#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "platform/Downloads.h"

namespace ovin {

/// One request to the network, as the rules of downloads have it. Main thread only.
class QtTransfer final : public Downloads::Transfer {
public:
    struct Bounds {
        /// What comes in must not be longer, and is as long as that where it is said to be.
        std::uint64_t longest = 0;
        bool isExact = false;
        /// For somebody who sends a byte now and then, and must not last for ever: a text has to come within this time, and
        /// of a file of exact length so much that the rest is worth waiting for, each time anew.
        std::chrono::milliseconds patience = std::chrono::minutes(2);
    };
    struct Handlers {
        /// Takes bytes; a failure ends the transfer.
        std::function<std::optional<DownloadFailure>(std::string_view bytes)> received;
        /// With a failure, or when all is there. May destroy the transfer.
        std::function<void(std::optional<DownloadFailure>)> finished;
    };

    /// Handlers are called by the event loop.
    QtTransfer(QNetworkAccessManager& network, const Downloads::Source& source, Bounds bounds, Handlers handlers);
    ~QtTransfer() override;

private:
    void begin(QNetworkAccessManager& network, const QUrl& url);
    void redirected(const QUrl& url);
    void checkAnnouncedLength();
    void checkProgress();
    void readAvailable();
    void replyFinished();
    [[nodiscard]] std::optional<DownloadFailure> failureOfReply() const;
    /// The end, once.
    void finish(std::optional<DownloadFailure> failure);

    const Downloads::Source source_;
    const Bounds bounds_;
    const Handlers handlers_;
    QObject receiver_;
    QTimer watch_;
    std::uint64_t receivedBefore_ = 0;
    QNetworkReply* reply_ = nullptr;
    /// Where it has led so far.
    QUrl url_;
    std::uint64_t received_ = 0;
    bool isFinished_ = false;
};

}  // namespace ovin
