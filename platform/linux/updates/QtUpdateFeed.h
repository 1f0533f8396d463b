#pragma once

#include <chrono>

#include "platform/UpdateFeed.h"

namespace ovin {

/// Reads a feed on a thread of its own, with Qt's network access. Follows redirections as long as each of them is safe and
/// none leads from HTTPS to plain HTTP. Decompresses nothing, keeps and sends no cookies or credentials, reads 4 MiB at
/// most, and gives up a server that is not done after `patience`.
///
/// In a library of its own (`ovin_linux_updates`), which the program loads as a module (`LoadedUpdateFeed`).
class QtUpdateFeed final : public UpdateFeed {
public:
    explicit QtUpdateFeed(std::chrono::milliseconds patience = std::chrono::seconds(30)) : patience_(patience) {}

    [[nodiscard]] std::unique_ptr<Reading> read(const std::string& url, std::function<void(Answer)> finished) override;

private:
    const std::chrono::milliseconds patience_;
};

}  // namespace ovin
