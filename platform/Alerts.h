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

    /// Shows a modal alert with the system's one default button. May return while it is still shown.
    virtual void run(const Alert& alert) = 0;
};

}  // namespace ovin
