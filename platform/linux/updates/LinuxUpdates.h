#pragma once

#include <memory>
#include <string_view>

#include "platform/UpdateServices.h"

namespace ovin {

/// What updates are made from on the Linux desktop, given the key, in base64, that their maker signs them with; null when it
/// is none. Removes what an earlier run has left unfinished. Main thread only.
///
/// In a library of its own (`ovin_linux_updates`): nothing else of Ovin takes the network or signatures, and a program that
/// does not update itself need not load what those take.
[[nodiscard]] std::shared_ptr<UpdateServices> openUpdateServices(std::string_view publicKey);

}  // namespace ovin
