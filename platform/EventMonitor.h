#pragma once

#include <functional>
#include <memory>

namespace ovin {

/// Tells of what the user does in other applications.
class EventMonitor {
public:
    /// Ends the monitoring when destroyed.
    class Token {
    public:
        Token() = default;
        Token(const Token&) = delete;
        Token& operator=(const Token&) = delete;
        virtual ~Token() = default;
    };

    virtual ~EventMonitor() = default;

    /// Calls `handler` for every press of the left or the right mouse button outside this application's windows, until the
    /// token goes. Null where the system lets nobody listen. Main thread only; the handler may be called on any thread.
    [[nodiscard]] virtual std::unique_ptr<Token> monitorMouseDowns(std::function<void()> handler) = 0;
};

}  // namespace ovin
