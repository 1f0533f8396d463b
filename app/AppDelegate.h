#pragma once

#include <memory>
#include <optional>

#include "app/ControlItem.h"
#include "platform/Platform.h"

namespace ovin {

/// The life of the application: what happens when it has been launched and before it ends. Owns everything that lives as
/// long as the process. Main thread only.
class AppDelegate {
public:
    /// Everything behind `platform` must outlive this object.
    explicit AppDelegate(const Platform& platform);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;
    ~AppDelegate() = default;

    /// To be called once, when the event loop is about to run. Shows one window alone where the environment asks for that,
    /// and starts the application otherwise.
    void applicationDidFinishLaunching();

    /// To be called before the process ends, whatever ends it: puts a widened display back.
    void applicationWillTerminate();

    /// Somebody has started the application a second time: its ledge opens. A preview becomes the application, because a
    /// system that tells it of the start has started no other process.
    void openAgain();

    /// Somebody has told the application to do something. Does nothing while one window is shown alone.
    void perform(Command command);

    /// Whether the environment asks for one window alone, without a status item.
    [[nodiscard]] static bool isPreview(const ProcessInfo& process);

private:
    void previewArrangeWindow();
    void start();
    void removeEarlierSettings();
    void createObjects();
    void beginFirstTask();
    [[nodiscard]] bool isSet(std::string_view variable) const;

    const Platform platform_;
    DisplayWidener widener_;
    GuideWindow guide_;
    AboutWindow about_;
    std::optional<Updater> updater_;
    std::shared_ptr<ItemsPanel> panel_;
    std::shared_ptr<ArrangeSession> arrange_;
    std::shared_ptr<ControlItem> control_;
    std::optional<ArrangeWindow> previewWindow_;
};

}  // namespace ovin
