#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Windows.h"

namespace ovin {

/// A panel whose content covers the title bar except the close button, which Escape also presses while the panel has the
/// keyboard. A click gives it the keyboard; the program stays inactive.
[[nodiscard]] std::unique_ptr<FloatingPanel> makeMacFloatingPanel(const std::string& title,
                                                                  std::function<void(int tag)> clicked,
                                                                  std::function<void()> closed);

}  // namespace ovin
