#pragma once

namespace ovin {

/// This application as the system sees it. Main thread only.
class Application {
public:
    virtual ~Application() = default;

    /// Brings the application to the front, whatever is there: it has no place in the Dock, and its windows would open
    /// behind those of others.
    virtual void activate() = 0;

    /// Ends the program, after its delegate has been told.
    virtual void terminate() = 0;

    /// Sounds the system's alert sound.
    virtual void beep() = 0;
};

}  // namespace ovin
