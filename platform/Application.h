#pragma once

namespace ovin {

/// This application as the system sees it. Main thread only.
class Application {
public:
    virtual ~Application() = default;

    /// Brings the application to the front of all others. It has no Dock icon, so its windows would otherwise open behind
    /// those of other applications.
    virtual void activate() = 0;

    /// Ends the program, after its delegate has been told.
    virtual void terminate() = 0;

    /// Sounds the system's alert sound.
    virtual void beep() = 0;
};

}  // namespace ovin
