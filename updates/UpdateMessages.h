#pragma once

#include <string>

#include "platform/Alerts.h"
#include "platform/Downloads.h"

/// What people are told about updates in alerts.
namespace ovin::UpdateMessages {

[[nodiscard]] Alert upToDate(const std::string& installed);
/// The feed could not be fetched.
[[nodiscard]] Alert feedFailed(DownloadFailure failure);
/// What was fetched is no feed.
[[nodiscard]] Alert feedUnreadable();
[[nodiscard]] Alert downloadFailed(DownloadFailure failure);
/// The package is not what its maker has signed.
[[nodiscard]] Alert wrongSignature();
[[nodiscard]] Alert installationFailed(const std::string& reason);
/// The package installer has the package, which lies at `path`.
[[nodiscard]] Alert handedOver(const std::string& version, const std::string& path);
[[nodiscard]] Alert restartFailed(const std::string& version);

}  // namespace ovin::UpdateMessages
