#pragma once

#include <string>

namespace ovin {

/// A message that the user has to acknowledge.
struct Alert {
    std::string message;
    /// Explains the message, in smaller letters.
    std::string informative;

    friend bool operator==(const Alert&, const Alert&) = default;
};

/// Main thread only.
class Alerts {
public:
    virtual ~Alerts() = default;

    /// Shows an alert with the system's one default button, in front of all windows of this application. May return while it
    /// is still shown; these windows can then be used beside it.
    virtual void run(const Alert& alert) = 0;
};

}  // namespace ovin
