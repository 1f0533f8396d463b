#pragma once

#include <memory>

#include "platform/Platform.h"

namespace ovin {

/// The About window: icon, name, version and links. Made at its first showing and kept for the rest of the run. Main thread
/// only.
class AboutWindow {
public:
    /// Everything behind `platform` must outlive this object.
    explicit AboutWindow(const Platform& platform) : platform_(platform) {}
    AboutWindow(const AboutWindow&) = delete;
    AboutWindow& operator=(const AboutWindow&) = delete;
    ~AboutWindow() = default;

    /// Brings the window to the front.
    void show();

private:
    void make();

    const Platform platform_;
    std::unique_ptr<InformationWindow> window_;
};

}  // namespace ovin
