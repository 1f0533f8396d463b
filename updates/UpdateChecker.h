#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/Platform.h"
#include "platform/UpdateServices.h"
#include "updates/CheckSchedule.h"
#include "updates/UpdateChoice.h"
#include "updates/UpdateWindow.h"

namespace ovin {

/// Looks for updates, as scheduled and when the user asks, and leads through one: the feed is read, the user is asked, the
/// package downloaded, verified and installed. There is one such course at a time.
///
/// What nobody asked for stays silent unless there is an update, of which a small panel tells, or a window where the
/// application wants no such reminder. As soon as the user has asked, for the check or for the update, every outcome is
/// shown. Main thread only.
class UpdateChecker final : public UpdateFramework::Controller {
public:
    /// Begins the scheduled checks, after the current work of the main queue. Everything behind `platform` and `services`
    /// must outlive this object.
    UpdateChecker(const Platform& platform, const UpdateServices& services, UpdateFramework::Delegate delegate);

    void checkForUpdates() override;

private:
    enum class Stage { idle, reading, reminding, asking, downloading, installing, installed };
    struct Result {
        bool isGenuine = false;
        UpdatePackages::Installation installation;
    };

    void checkUnasked();
    void dateChanged();
    void setAlarm();

    void readFeed();
    void feedRead(const Downloads::Text& result);
    void feedFailed(DownloadFailure failure);
    void choose(const Feed& feed);
    [[nodiscard]] UpdateSeeker seeker() const;
    [[nodiscard]] int rolloutGroup() const;

    void offer();
    void clicked(int tag);
    void skip();

    void download();
    void downloaded(const Downloads::File& result);
    void verifyAndInstall(std::shared_ptr<const DownloadedFile> file);
    void installed(const Result& result);
    void restart();

    /// The end of a course, with a last word to the user if there is one.
    void end(const std::optional<Alert>& alert);

    [[nodiscard]] std::string installedText(const char* key) const;
    [[nodiscard]] Downloads::Source source(std::string url) const { return {std::move(url), isTestFeed_}; }

    const Platform platform_;
    const UpdateServices services_;
    const UpdateFramework::Delegate delegate_;
    CheckSchedule schedule_;
    UpdateWindow window_;
    Stage stage_ = Stage::idle;
    /// Whether the user has asked for what goes on.
    bool isAsked_ = false;
    bool isTestFeed_ = false;
    FeedItem item_;
    std::unique_ptr<Downloads::Transfer> transfer_;
    /// For the next check, while nothing else goes on.
    std::unique_ptr<WallClock::Alarm> alarm_;
    const std::unique_ptr<WallClock::Alarm> dateObservation_;
    /// Tells tasks that come back whether somebody is still there.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace ovin
