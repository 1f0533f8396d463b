#pragma once

#include <functional>
#include <memory>
#include <string>

namespace ovin {

/// One running program of a kind in each session. The system itself starts a bundle only once and tells the running one, but
/// the program in a bundle can be started past it. Main thread only.
class FirstInstance {
public:
    /// Asks a program that runs from a bundle of this identifier, and has finished launching, to come forward. Whether there
    /// is one: whoever asked is then to end.
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
