#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <QUrl>
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
    void readAvailable();
    void replyFinished();
    [[nodiscard]] std::optional<DownloadFailure> failureOfReply() const;
    /// The end, once.
    void finish(std::optional<DownloadFailure> failure);

    const Downloads::Source source_;
    const Bounds bounds_;
    const Handlers handlers_;
    QObject receiver_;
    QTimer deadline_;
    QNetworkReply* reply_ = nullptr;
    /// Where it has led so far.
    QUrl url_;
    std::uint64_t received_ = 0;
    bool isFinished_ = false;
};

}  // namespace ovin
