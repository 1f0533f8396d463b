#include "updates/FeedUpdates.h"

#include <string>
#include <utility>
#include <vector>

#include "platform/Deployment.h"
#include "updates/CheckSchedule.h"
#include "updates/NewestItem.h"
#include "updates/UpdatePages.h"

namespace ovin {
namespace {

constexpr std::string_view skippedKey = "OvinSkippedUpdateVersion";
constexpr const char* windowTitle = "Software Update";
constexpr double cornerGap = 16;

class FeedChecker final : public UpdateFramework::Controller {
public:
    FeedChecker(const Platform& platform, UpdateFeed& feed, WallClock& clock, UpdateFramework::Delegate delegate)
        : platform_(platform),
          feed_(feed),
          clock_(clock),
          delegate_(std::move(delegate)),
          schedule_(platform.defaults, clock) {
        if (!feedURL().empty()) checkAfter(schedule_.untilFirst());
    }

    void checkForUpdates() override {
        isAsked_ = true;
        if (reading_) return;
        if (feedURL().empty()) return answer(UpdatePages::noFeed());
        (void)schedule_.begin();
        read();
    }

private:
    void checkAfter(std::chrono::seconds delay) {
        alarm_ = clock_.after(delay, [this] { checkUnasked(); });
    }

    void checkUnasked() {
        if (!reading_ && schedule_.begin()) return read();
        checkAfter(CheckSchedule::interval);
    }

    void read() {
        checkAfter(CheckSchedule::interval);
        reading_ = feed_.read(feedURL(), [this](const UpdateFeed::Answer& answer) { wasRead(answer); });
    }

    void wasRead(const UpdateFeed::Answer& read) {
        reading_.reset();
        const auto* const failure = std::get_if<FeedFailure>(&read);
        if (failure != nullptr && *failure == FeedFailure::unreachable) {
            checkAfter(schedule_.reachedNobody());
        } else {
            schedule_.reachedSomebody();
        }
        if (failure != nullptr) return answer(UpdatePages::failed(*failure));
        const auto newest =
            newestItem(std::get<std::vector<FeedItem>>(read), infoString("CFBundleVersion"), isAsked_ ? "" : skipped());
        if (!newest) return answer(UpdatePages::upToDate(infoString("CFBundleShortVersionString")));
        const bool isInView = reminder_ && newest->version == item_.version;
        item_ = *newest;
        if (std::exchange(isAsked_, false)) return offer();
        if (!isInView) remind();
    }

    /// What nobody asked for is not worth an alert.
    void answer(const Alert& alert) {
        if (std::exchange(isAsked_, false)) platform_.alerts.run(alert);
    }

    void remind() {
        const View page = UpdatePages::reminder(shownVersion(item_), platform_.resources);
        FloatingPanel::Placement placement;
        if (const auto screen = platform_.screens.main()) {
            placement = [room = screen->visibleFrame](Size size) {
                return Point{room.origin.x + room.size.width - size.width - cornerGap, room.origin.y + cornerGap};
            };
        }
        reminder_.reset();
        reminder_ = platform_.windows.makeFloatingPanel(
            windowTitle, [this](int tag) { clicked(tag); }, [this] { reminder_.reset(); });
        reminder_->show(page, placement);
    }

    void offer() {
        reminder_.reset();
        delegate_.willHandleShowingUpdate();
        const View page =
            UpdatePages::offer(shownVersion(item_), infoString("CFBundleShortVersionString"), platform_.resources);
        offer_ = platform_.windows.makeInformationWindow(windowTitle, page, [this](int tag) { clicked(tag); });
        offer_->show();
    }

    void clicked(int tag) {
        if (tag == UpdatePages::show) return offer();
        reminder_.reset();
        offer_.reset();
        if (tag == UpdatePages::open) platform_.workspace.open(pageOf(item_));
        // If the skipped version cannot be stored, the user is told of it again, which does no harm.
        if (tag == UpdatePages::skip) (void)platform_.defaults.set(skippedKey, item_.version);
    }

    [[nodiscard]] std::string feedURL() const {
        return delegate_.feedURLString().value_or(std::string(deployment::feedURL));
    }

    [[nodiscard]] std::string skipped() const {
        const auto stored = platform_.defaults.object(skippedKey);
        const auto* const version = stored ? std::get_if<std::string>(&*stored) : nullptr;
        return version == nullptr ? "" : *version;
    }

    [[nodiscard]] std::string infoString(const char* key) const { return platform_.resources.infoString(key).value_or("0"); }

    const Platform platform_;
    UpdateFeed& feed_;
    WallClock& clock_;
    const UpdateFramework::Delegate delegate_;
    CheckSchedule schedule_;
    std::unique_ptr<MainQueue::Timer> alarm_;
    std::unique_ptr<UpdateFeed::Reading> reading_;
    /// Whether the user waits for an answer.
    bool isAsked_ = false;
    FeedItem item_;
    std::unique_ptr<FloatingPanel> reminder_;
    std::unique_ptr<InformationWindow> offer_;
};

}  // namespace

std::unique_ptr<UpdateFramework::Controller> FeedUpdates::start(Delegate delegate) {
    return std::make_unique<FeedChecker>(platform_, feed_, clock_, std::move(delegate));
}

}  // namespace ovin
