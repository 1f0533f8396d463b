#include "updates/UpdateChecker.h"

#include <algorithm>
#include <cstdint>

#include "platform/Deployment.h"
#include "updates/UpdateMessages.h"
#include "updates/UpdatePages.h"

namespace ovin {
namespace {

constexpr std::size_t longestFeed = std::size_t{4} * 1024 * 1024;
constexpr int groupCount = 7;

constexpr std::string_view skippedKey = "OvinSkippedUpdateVersion";
constexpr std::string_view groupKey = "OvinUpdateGroup";

constexpr const char* versionKey = "CFBundleVersion";
constexpr const char* shortVersionKey = "CFBundleShortVersionString";

}  // namespace

UpdateChecker::UpdateChecker(const Platform& platform, const UpdateServices& services, UpdateFramework::Delegate delegate)
    : platform_(platform),
      services_(services),
      delegate_(std::move(delegate)),
      schedule_(platform.defaults, services.wallClock),
      window_(platform, [this](int tag) { clicked(tag); }),
      dateObservation_(services.wallClock.observeDate([this] { dateChanged(); })) {
    setAlarm();
}

/// A course that goes on is not disturbed, however long the user thinks about it.
void UpdateChecker::setAlarm() {
    alarm_.reset();
    if (stage_ != Stage::idle) return;
    alarm_ = services_.wallClock.setAlarm(schedule_.due(), [this] { checkUnasked(); });
}

void UpdateChecker::checkUnasked() {
    isAsked_ = false;
    if (schedule_.begin()) readFeed();
    setAlarm();
}

void UpdateChecker::dateChanged() {
    schedule_.dateChanged();
    setAlarm();
}

void UpdateChecker::checkForUpdates() {
    isAsked_ = true;
    switch (stage_) {
        case Stage::idle:
            (void)schedule_.begin();
            window_.show(UpdatePages::looking(platform_.resources));
            readFeed();
            return setAlarm();
        case Stage::reading:
            window_.show(UpdatePages::looking(platform_.resources));
            return window_.bringForward();
        case Stage::reminding:
            return offer();
        default:
            window_.bringForward();
    }
}

void UpdateChecker::readFeed() {
    stage_ = Stage::reading;
    const auto testFeed = delegate_.feedURLString();
    isTestFeed_ = testFeed.has_value();
    transfer_ = services_.downloads.read(source(testFeed.value_or(std::string(deployment::feedURL))), longestFeed,
                                         [this](const Downloads::Text& result) { feedRead(result); });
}

void UpdateChecker::feedRead(const Downloads::Text& result) {
    if (const auto* const failure = std::get_if<DownloadFailure>(&result)) return feedFailed(*failure);
    schedule_.reachedSomebody();
    const auto feed = services_.reader.read(std::get<std::string>(result));
    if (!feed) return end(UpdateMessages::feedUnreadable());
    choose(*feed);
}

void UpdateChecker::feedFailed(DownloadFailure failure) {
    // All other failures say that somebody was there, and gave no good answer.
    if (failure == DownloadFailure::unreachable) {
        schedule_.reachedNobody();
    } else {
        schedule_.reachedSomebody();
    }
    end(UpdateMessages::feedFailed(failure));
}

void UpdateChecker::choose(const Feed& feed) {
    const auto item = chooseUpdate(feed, services_.packages, seeker());
    if (!item) return end(UpdateMessages::upToDate(installedText(shortVersionKey)));
    transfer_.reset();
    item_ = *item;
    if (isAsked_ || !delegate_.supportsGentleScheduledUpdateReminders()) return offer();
    stage_ = Stage::reminding;
    window_.remind(UpdatePages::reminder(shownVersion(item_), platform_.resources));
}

UpdateSeeker UpdateChecker::seeker() const {
    UpdateSeeker seeker{installedText(versionKey), isTestFeed_};
    if (isAsked_) return seeker;
    const auto stored = platform_.defaults.object(skippedKey);
    const auto* const skipped = stored ? std::get_if<std::string>(&*stored) : nullptr;
    seeker.unasked = {skipped == nullptr ? "" : *skipped, rolloutGroup(), services_.wallClock.date()};
    return seeker;
}

/// Users fall into groups by the second in which they looked for the first time.
int UpdateChecker::rolloutGroup() const {
    if (!platform_.defaults.object(groupKey)) {
        (void)platform_.defaults.set(groupKey, std::int64_t{services_.wallClock.date().count()} % groupCount);
    }
    return static_cast<int>(std::clamp<std::int64_t>(platform_.defaults.integer(groupKey), 0, groupCount - 1));
}

void UpdateChecker::offer() {
    stage_ = Stage::asking;
    delegate_.willHandleShowingUpdate();
    const bool canBeSkipped = !isCriticalFor(item_, installedText(versionKey));
    const auto notes = UpdatePages::notesOf(item_);
    const double notesHeight = notes ? platform_.windows.fittingSize(*notes).height : 0;
    window_.show(
        UpdatePages::offer({item_, installedText(shortVersionKey), canBeSkipped, notesHeight}, platform_.resources));
    window_.bringForward();
}

/// A click may arrive when the page that it belongs to is no longer shown.
void UpdateChecker::clicked(int tag) {
    switch (tag) {
        case UpdatePages::cancel:
            if (stage_ == Stage::reading || stage_ == Stage::downloading) end({});
            return;
        case UpdatePages::closed:
            // What is being installed cannot be stopped, and the outcome is shown.
            if (stage_ != Stage::installing) end({});
            return;
        case UpdatePages::show:
            if (stage_ == Stage::reminding) offer();
            return;
        case UpdatePages::later:
            if (stage_ == Stage::reminding || stage_ == Stage::asking || stage_ == Stage::installed) end({});
            return;
        case UpdatePages::skip:
            if (stage_ == Stage::asking) skip();
            return;
        case UpdatePages::notes:
            if (stage_ == Stage::asking) platform_.workspace.open(item_.notesLink);
            return;
        case UpdatePages::install:
            if (stage_ == Stage::asking) download();
            return;
        case UpdatePages::restart:
            if (stage_ == Stage::installed) restart();
            return;
        default:
            return;
    }
}

void UpdateChecker::skip() {
    // One that cannot be remembered is offered again, which does no harm.
    (void)platform_.defaults.set(skippedKey, item_.version);
    end({});
}

void UpdateChecker::download() {
    isAsked_ = true;
    stage_ = Stage::downloading;
    const auto showProgress = [this](std::uint64_t received) {
        window_.show(UpdatePages::downloading(shownVersion(item_), received, *item_.length, platform_.resources));
    };
    showProgress(0);
    transfer_ = services_.downloads.download(source(item_.url), *item_.length, showProgress,
                                             [this](const Downloads::File& result) { downloaded(result); });
}

void UpdateChecker::downloaded(const Downloads::File& result) {
    if (const auto* const failure = std::get_if<DownloadFailure>(&result)) {
        return end(UpdateMessages::downloadFailed(*failure));
    }
    stage_ = Stage::installing;
    window_.show(UpdatePages::installing(shownVersion(item_), platform_.resources));
    auto file = std::get<std::shared_ptr<const DownloadedFile>>(result);
    transfer_.reset();
    verifyAndInstall(std::move(file));
}

/// Nothing looks into the file before its signature has been verified.
void UpdateChecker::verifyAndInstall(std::shared_ptr<const DownloadedFile> file) {
    const auto work = [this, alive = std::weak_ptr(alive_), &queue = platform_.mainQueue, &packages = services_.packages,
                       file = std::move(file), signature = item_.edSignature, name = fileNameIn(item_.url)] {
        Result result;
        result.isGenuine = packages.isSigned(*file, signature);
        if (result.isGenuine) result.installation = packages.install(*file, name);
        queue.async([this, alive, result] {
            if (alive.lock()) installed(result);
        });
    };
    platform_.tasks.start(Tasks::Priority::userInitiated, work);
}

void UpdateChecker::installed(const Result& result) {
    if (!result.isGenuine) return end(UpdateMessages::wrongSignature());
    switch (result.installation.outcome) {
        case UpdatePackages::Installation::Outcome::failed:
            return end(UpdateMessages::installationFailed(result.installation.detail));
        case UpdatePackages::Installation::Outcome::handedOver:
            return end(UpdateMessages::handedOver(shownVersion(item_), result.installation.detail));
        case UpdatePackages::Installation::Outcome::replaced:
            stage_ = Stage::installed;
            return window_.show(UpdatePages::installed(shownVersion(item_), platform_.resources));
    }
}

void UpdateChecker::restart() {
    const bool isArranged = services_.packages.restartAtEnd();
    end(isArranged ? std::nullopt : std::optional(UpdateMessages::restartFailed(shownVersion(item_))));
    if (isArranged) platform_.application.terminate();
}

void UpdateChecker::end(const std::optional<Alert>& alert) {
    const bool isShown = alert && isAsked_;
    stage_ = Stage::idle;
    isAsked_ = false;
    transfer_.reset();
    window_.close();
    if (isShown) platform_.alerts.run(*alert);
    setAlarm();
}

std::string UpdateChecker::installedText(const char* key) const { return platform_.resources.infoString(key).value_or("0"); }

}  // namespace ovin
