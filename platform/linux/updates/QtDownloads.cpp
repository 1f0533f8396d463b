#include "platform/linux/updates/QtDownloads.h"

#include <QUrl>
#include <cerrno>
#include <memory>
#include <string>
#include <utility>

#include "platform/linux/system/TemporaryFile.h"
#include "platform/linux/system/XdgFolders.h"
#include "platform/linux/updates/QtTransfer.h"

namespace ovin {
namespace {

DownloadFailure failureOf(const std::error_code& error) {
    const int code = error.value();
    return code == ENOSPC || code == EDQUOT || code == EFBIG ? DownloadFailure::noRoom : DownloadFailure::unwritable;
}

/// The toolkit reports nothing within the call that asks, and neither does a failure of the disk.
class Refused final : public Downloads::Transfer {
public:
    explicit Refused(std::function<void()> tell) {
        QMetaObject::invokeMethod(
            &receiver_,
            [tell = std::move(tell)] {
                const auto telling = tell;
                telling();
            },
            Qt::QueuedConnection);
    }

private:
    QObject receiver_;
};

}  // namespace

std::unique_ptr<Downloads::Transfer> QtDownloads::read(const Source& source, std::size_t longest,
                                                       std::function<void(Text)> finished) {
    const auto text = std::make_shared<std::string>();
    return std::make_unique<QtTransfer>(
        network_, source, QtTransfer::Bounds{.longest = longest},
        QtTransfer::Handlers{[text](std::string_view bytes) -> std::optional<DownloadFailure> {
                                 *text += bytes;
                                 return std::nullopt;
                             },
                             [text, finished = std::move(finished)](std::optional<DownloadFailure> failure) {
                                 finished(failure ? Text(*failure) : Text(std::move(*text)));
                             }});
}

std::unique_ptr<Downloads::Transfer> QtDownloads::download(const Source& source, std::uint64_t length,
                                                           std::function<void(std::uint64_t)> progressed,
                                                           std::function<void(File)> finished) {
    std::error_code error;
    const std::shared_ptr<TemporaryFile> file = TemporaryFile::create(folder_, length, error);
    if (error) {
        return std::make_unique<Refused>(
            [finished = std::move(finished), failure = failureOf(error)] { finished(failure); });
    }
    return std::make_unique<QtTransfer>(
        network_, source, QtTransfer::Bounds{.longest = length, .isExact = true},
        QtTransfer::Handlers{
            [file, progressed = std::move(progressed)](std::string_view bytes) -> std::optional<DownloadFailure> {
                if (const auto problem = file->append(bytes)) return failureOf(problem);
                progressed(file->size());
                return std::nullopt;
            },
            [file, finished = std::move(finished)](std::optional<DownloadFailure> failure) {
                finished(failure ? File(*failure) : File(std::shared_ptr<const DownloadedFile>(file)));
            }});
}

bool isSafeSource(const QUrl& url, bool mayBePlainOnThisMachine) {
    if (!url.isValid() || url.host().isEmpty()) return false;
    if (url.scheme() == QLatin1String("https")) return true;
    const bool isThisMachine = url.host() == QLatin1String("127.0.0.1") || url.host() == QLatin1String("localhost");
    return mayBePlainOnThisMachine && isThisMachine && url.scheme() == QLatin1String("http");
}

std::filesystem::path downloadFolder() { return userFolder("XDG_CACHE_HOME", ".cache") / "ovin" / "updates"; }

}  // namespace ovin
