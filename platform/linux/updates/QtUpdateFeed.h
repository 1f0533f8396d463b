#pragma once

#include <chrono>

#include "platform/UpdateFeed.h"

namespace ovin {

/// Reads a feed on a thread of its own, with Qt's network access. Redirections are followed as long as each of them is safe
/// and none leads from HTTPS to plain HTTP. Nothing is decompressed, no cookies or credentials are kept or sent, 4 MiB are
/// read at most, and a server that is not done in time is given up.
///
/// In a library of its own (`ovin_linux_updates`): nothing else of Ovin takes the network, and a program that does not look
/// for updates need not load what that takes.
class QtUpdateFeed final : public UpdateFeed {
public:
    explicit QtUpdateFeed(std::chrono::milliseconds patience = std::chrono::seconds(30)) : patience_(patience) {}

    [[nodiscard]] std::unique_ptr<Reading> read(const std::string& url, std::function<void(Answer)> finished) override;

private:
    const std::chrono::milliseconds patience_;
};

}  // namespace ovin
