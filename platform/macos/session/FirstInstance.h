#pragma once

#include <functional>
#include <memory>
#include <string>

namespace ovin {

/// Lets only one instance of a program run in each session. The system starts a bundle only once and tells the running
/// instance, but the program in a bundle can also be started directly. Main thread only.
class FirstInstance {
public:
    /// Asks another program that runs from a bundle of this identifier, and has finished launching, to come forward. Returns
    /// whether there is one; the caller must then end.
    [[nodiscard]] static bool askAnother(const std::string& bundleIdentifier);

    /// Calls `handler` on the main thread whenever another program asks.
    FirstInstance(const std::string& bundleIdentifier, std::function<void()> handler);
    FirstInstance(const FirstInstance&) = delete;
    FirstInstance& operator=(const FirstInstance&) = delete;
    ~FirstInstance();

private:
    struct Native;

    std::unique_ptr<Native> native_;
};

}  // namespace ovin
