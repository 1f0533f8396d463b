#pragma once

#include <map>
#include <mutex>
#include <utility>

#include "platform/Workspace.h"

namespace ovin {

/// An image that has only a name.
class MemoryImage final : public Image::Content {
public:
    explicit MemoryImage(std::string imageName) : name(std::move(imageName)) {}

    static Image named(std::string name) { return Image(std::make_shared<const MemoryImage>(std::move(name))); }
    static const std::string& nameOf(const Image& image) { return static_cast<const MemoryImage&>(image.content()).name; }

    const std::string name;
};

/// Running applications as the test lists them, and files that are known by their display name and their icon.
class MemoryWorkspace final : public Workspace {
public:
    /// Replaces an application with the same pid, which must have ended.
    void launch(RunningApplication application) {
        {
            const std::lock_guard lock(mutex_);
            removeApplication(application.pid);
            applications_.push_back(std::move(application));
        }
        notify();
    }

    void quit(ProcessID pid) {
        {
            const std::lock_guard lock(mutex_);
            removeApplication(pid);
        }
        notify();
    }

    void addFile(const std::string& path, std::string displayName, Image icon) {
        const std::lock_guard lock(mutex_);
        files_.insert_or_assign(path, std::pair(std::move(displayName), std::move(icon)));
    }

    /// What was opened, in order.
    std::vector<std::string> openedURLs;

    void open(const std::string& url) override { openedURLs.push_back(url); }

    void observeApplications(std::function<void()> handler) override { observers_.push_back(std::move(handler)); }

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override {
        const std::lock_guard lock(mutex_);
        return applications_;
    }

    [[nodiscard]] std::string displayName(const std::string& path) const override {
        const std::lock_guard lock(mutex_);
        const auto file = files_.find(path);
        if (file != files_.end()) return file->second.first;
        return lastComponent(path);
    }

    [[nodiscard]] std::optional<Image> icon(const std::string& path) const override {
        const std::lock_guard lock(mutex_);
        const auto file = files_.find(path);
        if (file == files_.end()) return std::nullopt;
        return file->second.second;
    }

private:
    void notify() const {
        for (const auto& observer : observers_) observer();
    }
    void removeApplication(ProcessID pid) {
        std::erase_if(applications_, [pid](const RunningApplication& application) { return application.pid == pid; });
    }

    static std::string lastComponent(const std::string& path) {
        const auto end = path.find_last_not_of('/');
        if (end == std::string::npos) return path.substr(0, 1);
        const auto slash = path.find_last_of('/', end);
        const auto start = slash == std::string::npos ? 0 : slash + 1;
        return path.substr(start, end + 1 - start);
    }

    mutable std::mutex mutex_;
    std::vector<RunningApplication> applications_;
    std::vector<std::function<void()>> observers_;
    std::map<std::string, std::pair<std::string, Image>> files_;
};

}  // namespace ovin
