#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Alerts.h"
#include "platform/LaunchAtLogin.h"
#include "platform/Resources.h"
#include "platform/UpdateFramework.h"
#include "platform/memory/MemoryWorkspace.h"

namespace ovin {

/// Alerts that a test reads; they need not be acknowledged.
class MemoryAlerts final : public Alerts {
public:
    std::vector<Alert> shown;
    /// Runs when an alert is shown.
    std::function<void()> showing;

    void run(const Alert& alert) override {
        shown.push_back(alert);
        if (showing) showing();
    }
};

/// A login service that a test sets up.
class MemoryLaunchAtLogin final : public LaunchAtLogin {
public:
    Status current = Status::notRegistered;
    /// The error of every change, if any.
    std::optional<std::string> failure;
    int registrationCount = 0;
    int unregistrationCount = 0;

    [[nodiscard]] Status status() const override { return current; }

    [[nodiscard]] std::optional<std::string> registerApplication() override {
        ++registrationCount;
        // Only the user can switch on again what the user has switched off.
        if (!failure && current != Status::requiresApproval) current = Status::enabled;
        return failure;
    }

    [[nodiscard]] std::optional<std::string> unregisterApplication() override {
        ++unregistrationCount;
        if (!failure) current = Status::notRegistered;
        return failure;
    }
};

/// Pictures that have only names and sizes.
class MemoryResources final : public Resources {
public:
    std::map<std::string, Size, std::less<>> pictures{
        {"explainer-collapsed", {824, 120}}, {"explainer-expanded", {824, 120}}, {"Ovin", {512, 512}}};
    std::map<std::string, std::string, std::less<>> info{{"CFBundleShortVersionString", "1.0"}, {"CFBundleVersion", "1"}};
    const Image icon = MemoryImage::named("application icon");
    const Words* spoken = &macWords();

    [[nodiscard]] const Words& words() const override { return *spoken; }

    [[nodiscard]] std::optional<Picture> picture(std::string_view name) const override {
        const auto found = pictures.find(name);
        if (found == pictures.end()) return std::nullopt;
        auto& image = images_[found->first];
        if (!image) image = MemoryImage::named(found->first);
        return Picture{*image, found->second};
    }

    [[nodiscard]] Image applicationIcon() const override { return icon; }

    [[nodiscard]] std::optional<std::string> infoString(std::string_view key) const override {
        const auto found = info.find(key);
        if (found == info.end()) return std::nullopt;
        return found->second;
    }

private:
    /// Kept so that two calls return equal images.
    mutable std::map<std::string, std::optional<Image>> images_;
};

/// An update framework that only counts calls, and lets a test ask the application what a real one would ask.
class MemoryUpdateFramework final : public UpdateFramework {
public:
    /// Set while the controller exists.
    std::optional<Delegate> delegate;
    int startCount = 0;
    int checkCount = 0;
    /// Runs within each check.
    std::function<void()> checking;

    [[nodiscard]] std::unique_ptr<Controller> start(Delegate newDelegate) override {
        ++startCount;
        delegate = std::move(newDelegate);
        return std::make_unique<Counter>(*this);
    }

private:
    class Counter final : public Controller {
    public:
        explicit Counter(MemoryUpdateFramework& framework) : framework_(framework) {}
        ~Counter() override { framework_.delegate.reset(); }
        void checkForUpdates() override {
            ++framework_.checkCount;
            if (framework_.checking) framework_.checking();
        }

    private:
        MemoryUpdateFramework& framework_;
    };
};

}  // namespace ovin
