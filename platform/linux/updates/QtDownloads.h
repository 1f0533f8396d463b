#pragma once

#include <QNetworkAccessManager>
#include <filesystem>

#include "platform/Downloads.h"

class QNetworkReply;

namespace ovin {

/// Downloads with Qt's network access, on its main thread. Redirections are followed as long as each of them is safe and
/// none leads from HTTPS to plain HTTP. Nothing is decompressed, no cookies or credentials are kept or sent, and whoever is
/// silent for half a minute, or brings next to nothing in two, is given up.
class QtDownloads final : public Downloads {
public:
    /// Files come into this folder.
    explicit QtDownloads(std::filesystem::path folder) : folder_(std::move(folder)) {}

    [[nodiscard]] std::unique_ptr<Transfer> read(const Source& source, std::size_t longest,
                                                 std::function<void(Text)> finished) override;
    [[nodiscard]] std::unique_ptr<Transfer> download(const Source& source, std::uint64_t length,
                                                     std::function<void(std::uint64_t)> progressed,
                                                     std::function<void(File)> finished) override;

private:
    const std::filesystem::path folder_;
    QNetworkAccessManager network_;
};

/// Whether this may be read from.
[[nodiscard]] bool isSafeSource(const QUrl& url, bool mayBePlainOnThisMachine);

/// The private folder for downloads, by the XDG rules.
[[nodiscard]] std::filesystem::path downloadFolder();

}  // namespace ovin
