#pragma once

#include <functional>
#include <memory>

#include "platform/Platform.h"

namespace ovin {

/// The guide: one page that explains what Ovin does and why, with a button that starts organizing. One for each program,
/// which keeps its window. Main thread only.
class GuideWindow {
public:
    /// Everything behind `platform` must outlive this object.
    explicit GuideWindow(const Platform& platform) : platform_(platform) {}
    GuideWindow(const GuideWindow&) = delete;
    GuideWindow& operator=(const GuideWindow&) = delete;
    ~GuideWindow() = default;

    /// Shows the guide afresh, in place of the one that was shown before. While the user organizes there is no button to
    /// start it. `onOrganize` is called after the guide has closed.
    void show(bool isOrganizing, std::function<void()> onOrganize);

private:
    [[nodiscard]] double scrollHeight(double pageHeight) const;
    void clicked(int tag, const std::function<void()>& onOrganize);

    const Platform platform_;
    /// The latest guide, open or closed.
    std::unique_ptr<InformationWindow> window_;
};

}  // namespace ovin
