#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/UpdateServices.h"
#include "platform/UrlHost.h"
#include "platform/memory/SimulatedTime.h"

namespace ovin {

/// A clock that a test can set wrong. The computer never started anew and never sleeps but in `sleep`.
class MemoryWallClock final : public WallClock {
public:
    explicit MemoryWallClock(SimulatedTime& time) : time_(time) {}

    /// How often an alarm has gone off.
    int alarmCount = 0;

    /// Time passes that no timer of the main queue counts. Alarms that were due meanwhile go off when time goes on.
    void sleep(std::chrono::seconds duration) {
        asleep_ += duration;
        for (Pending* const alarm : alarms_) start(*alarm);
    }
    /// Somebody sets the date.
    void changeDate(std::chrono::seconds by) {
        start_ += by;
        const auto observers = observers_;
        for (const Observer* const observer : observers) {
            if (observers_.contains(observer)) observer->call();
        }
    }
    /// The alarms that wait.
    [[nodiscard]] std::size_t pendingCount() const { return alarms_.size(); }

    [[nodiscard]] std::chrono::seconds date() const override { return start_ + timeSinceBoot(); }
    [[nodiscard]] std::chrono::seconds timeSinceBoot() const override {
        return std::chrono::floor<std::chrono::seconds>(time_.now()) + asleep_;
    }
    [[nodiscard]] std::unique_ptr<Alarm> setAlarm(std::chrono::seconds time, std::function<void()> handler) override {
        auto alarm = std::make_unique<Pending>(*this, time, std::move(handler));
        start(*alarm);
        return alarm;
    }
    [[nodiscard]] std::unique_ptr<Alarm> observeDate(std::function<void()> handler) override {
        return std::make_unique<Observer>(*this, std::move(handler));
    }

private:
    struct Pending final : public Alarm {
        Pending(MemoryWallClock& itsClock, std::chrono::seconds due, std::function<void()> itsHandler)
            : clock(itsClock), time(due), handler(std::move(itsHandler)) {
            clock.alarms_.insert(this);
        }
        ~Pending() override { clock.alarms_.erase(this); }

        MemoryWallClock& clock;
        const std::chrono::seconds time;
        const std::function<void()> handler;
        std::unique_ptr<MainQueue::Timer> timer;
    };
    struct Observer final : public Alarm {
        Observer(MemoryWallClock& itsClock, std::function<void()> itsHandler)
            : clock(itsClock), handler(std::move(itsHandler)) {
            clock.observers_.insert(this);
        }
        ~Observer() override { clock.observers_.erase(this); }

        /// The handler may destroy this object.
        void call() const {
            const auto running = handler;
            running();
        }

        MemoryWallClock& clock;
        const std::function<void()> handler;
    };

    void start(Pending& alarm) {
        // A century is for ever, and what is longer overflows where nanoseconds are counted.
        const std::chrono::seconds seconds = std::min(alarm.time, std::chrono::seconds(std::chrono::years(100)));
        const SimulatedTime::Duration left = seconds - asleep_ - time_.now();
        alarm.timer = time_.after(std::max(left, SimulatedTime::Duration::zero()), [this, &alarm] { goOff(alarm); });
    }
    void goOff(Pending& alarm) {
        ++alarmCount;
        alarms_.erase(&alarm);
        const auto handler = alarm.handler;
        handler();
    }

    SimulatedTime& time_;
    /// What the date is, when the simulation is at its beginning and the computer has not slept.
    std::chrono::seconds start_{1'800'000'000};
    std::chrono::seconds asleep_{0};
    std::set<Pending*> alarms_;
    std::set<const Observer*> observers_;
};

/// Files that are only their content.
class MemoryFile final : public DownloadedFile {
public:
    explicit MemoryFile(std::string content) : text(std::move(content)) { ++count(); }
    ~MemoryFile() override { --count(); }

    const std::string text;

    /// How many there are.
    static int& count() {
        static int files = 0;
        return files;
    }
};

/// A network on which each address has something or fails, after a while.
class MemoryDownloads final : public Downloads {
public:
    explicit MemoryDownloads(SimulatedTime& time) : time_(time) {}

    std::map<std::string, Text> answers;
    std::chrono::seconds latency{1};
    /// The sources that were read from, in their order.
    std::vector<Source> requests;
    /// How many transfers there are that have not been destroyed.
    int transferCount = 0;

    [[nodiscard]] std::unique_ptr<Transfer> read(const Source& source, std::size_t longest,
                                                 std::function<void(Text)> finished) override {
        return begin(source, [this, source, longest, finished = std::move(finished)] {
            Text answer = answerOf(source);
            const auto* const text = std::get_if<std::string>(&answer);
            if (text != nullptr && text->size() > longest) answer = DownloadFailure::tooLong;
            finished(answer);
        });
    }

    /// Half of the file comes at half time.
    [[nodiscard]] std::unique_ptr<Transfer> download(const Source& source, std::uint64_t length,
                                                     std::function<void(std::uint64_t)> progressed,
                                                     std::function<void(File)> finished) override {
        auto transfer = begin(source, [this, source, length, finished = std::move(finished)] {
            const Text answer = answerOf(source);
            if (const auto* const failure = std::get_if<DownloadFailure>(&answer)) return finished(*failure);
            const auto& text = std::get<std::string>(answer);
            if (text.size() > length) return finished(DownloadFailure::tooLong);
            if (text.size() < length) return finished(DownloadFailure::tooShort);
            finished(std::make_shared<const MemoryFile>(text));
        });
        transfer->progress = time_.after(SimulatedTime::Duration(latency) / 2,
                                         [length, progressed = std::move(progressed)] { progressed(length / 2); });
        return transfer;
    }

private:
    struct Pending final : public Transfer {
        explicit Pending(int& transfers) : count(transfers) { ++count; }
        ~Pending() override { --count; }
        int& count;
        std::unique_ptr<MainQueue::Timer> progress;
        std::unique_ptr<MainQueue::Timer> end;
    };

    [[nodiscard]] static bool isSafe(const Source& source) {
        if (source.url.starts_with("https://")) return true;
        return source.mayBePlainOnThisMachine && source.url.starts_with("http://") && leadsToThisMachine(source.url);
    }

    [[nodiscard]] Text answerOf(const Source& source) const {
        if (!isSafe(source)) return DownloadFailure::insecure;
        const auto found = answers.find(source.url);
        return found == answers.end() ? Text(DownloadFailure::unreachable) : found->second;
    }

    std::unique_ptr<Pending> begin(const Source& source, MainQueue::Work work) {
        requests.push_back(source);
        auto transfer = std::make_unique<Pending>(transferCount);
        transfer->end = time_.after(latency, std::move(work));
        return transfer;
    }

    SimulatedTime& time_;
};

/// Knows feeds by their text.
class MemoryFeedReader final : public FeedReader {
public:
    std::map<std::string, Feed, std::less<>> feeds;

    [[nodiscard]] std::optional<Feed> read(std::string_view text) const override {
        const auto found = feeds.find(text);
        if (found == feeds.end()) return std::nullopt;
        return found->second;
    }
};

/// Packages end in ".package"; the maker's signatures are known.
class MemoryPackages final : public UpdatePackages {
public:
    std::string system = "2.36";
    /// What the maker has signed, with the signature.
    std::set<std::pair<std::string, std::string>> genuine;
    Installation installation{Installation::Outcome::replaced, ""};
    bool canRestart = true;
    int restartCount = 0;
    /// What was installed, with its name.
    mutable std::vector<std::pair<std::string, std::string>> installed;
    /// What was done with files: "verify" and "install".
    mutable std::vector<std::string> actions;

    [[nodiscard]] std::string systemVersion() const override { return system; }
    [[nodiscard]] bool suits(std::string_view fileName) const override { return fileName.ends_with(".package"); }
    [[nodiscard]] bool isSigned(const DownloadedFile& file, std::string_view edSignature) const override {
        actions.emplace_back("verify");
        return genuine.contains({textOf(file), std::string(edSignature)});
    }
    [[nodiscard]] Installation install(const DownloadedFile& file, std::string_view fileName) const override {
        actions.emplace_back("install");
        installed.emplace_back(textOf(file), fileName);
        return installation;
    }
    [[nodiscard]] bool restartAtEnd() override {
        ++restartCount;
        return canRestart;
    }

private:
    static const std::string& textOf(const DownloadedFile& file) { return dynamic_cast<const MemoryFile&>(file).text; }
};

/// All that an update framework is made from, in memory.
struct MemoryUpdateServices {
    explicit MemoryUpdateServices(SimulatedTime& time) : wallClock(time), downloads(time) {}

    MemoryWallClock wallClock;
    MemoryDownloads downloads;
    MemoryFeedReader reader;
    MemoryPackages packages;

    [[nodiscard]] UpdateServices services() { return {wallClock, downloads, reader, packages}; }
};

}  // namespace ovin
