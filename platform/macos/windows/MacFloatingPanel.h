#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Windows.h"

namespace ovin {

/// A panel that covers its title bar but for the close button, which Escape presses too while the panel has the keyboard.
/// It gets that by a click, and the program stays inactive.
[[nodiscard]] std::unique_ptr<FloatingPanel> makeMacFloatingPanel(const std::string& title,
                                                                  std::function<void(int tag)> clicked,
                                                                  std::function<void()> closed);

}  // namespace ovin
