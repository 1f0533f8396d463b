#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Windows.h"

namespace ovin {

/// A page that covers all of an ordinary window, including its title bar, which is empty.
[[nodiscard]] std::unique_ptr<InformationWindow> makeMacInformationWindow(const std::string& title, const View& content,
                                                                          std::function<void(int tag)> clicked);

}  // namespace ovin
