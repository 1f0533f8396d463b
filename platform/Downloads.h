#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>

#include "platform/Handle.h"

namespace ovin {

enum class DownloadFailure {
    /// Nobody was reached: no network, an unknown host, a connection that fails or falls silent.
    unreachable,
    /// Who answered could not prove to be the host.
    untrusted,
    /// The address, or one that it redirects to, is one where others could read or alter what is sent.
    insecure,
    /// The server has answered, but not with what was asked for.
    refused,
    tooLong,
    tooShort,
    /// The disk has no room for it.
    noRoom,
    /// It cannot be written for another reason.
    unwritable,
};

/// A file that came in as a whole and that nobody has looked at. It has no name that others could find, or one in a private
/// folder, and goes with this object.
class DownloadedFile {
public:
    DownloadedFile() = default;
    DownloadedFile(const DownloadedFile&) = delete;
    DownloadedFile& operator=(const DownloadedFile&) = delete;
    virtual ~DownloadedFile() = default;
};

/// Fetches over the network, by HTTPS alone. Main thread only.
class Downloads {
public:
    struct Source {
        std::string url;
        /// Whether plain HTTP will do where it leads to this very machine. A world may read hosts less strictly than
        /// `leadsToThisMachine` in `UrlHost.h` does.
        bool mayBePlainOnThisMachine = false;

        friend bool operator==(const Source&, const Source&) = default;
    };

    /// Destroying it cancels what has not finished, silently and without a trace.
    using Transfer = Handle;

    using Text = std::variant<std::string, DownloadFailure>;
    using File = std::variant<std::shared_ptr<const DownloadedFile>, DownloadFailure>;

    virtual ~Downloads() = default;

    /// Reads a text of `longest` bytes at most; a longer one is given up as soon as it is seen to be longer. `finished` is
    /// called once, never within this call, and may destroy the transfer.
    [[nodiscard]] virtual std::unique_ptr<Transfer> read(const Source& source, std::size_t longest,
                                                         std::function<void(Text)> finished) = 0;

    /// Downloads a file of `length` bytes. One that turns out to be longer or shorter is given up as soon as that is seen,
    /// and one that there is no room for before it begins. `progressed` is told how many bytes have come in; `finished` is
    /// as for `read`. No part of a file remains but of one that has been delivered, and that only as long as it is held.
    [[nodiscard]] virtual std::unique_ptr<Transfer> download(const Source& source, std::uint64_t length,
                                                             std::function<void(std::uint64_t)> progressed,
                                                             std::function<void(File)> finished) = 0;
};

}  // namespace ovin
