#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "platform/Application.h"
#include "platform/EventMonitor.h"
#include "platform/Screens.h"

namespace ovin {

/// An application that only counts calls.
class MemoryApplication final : public Application {
public:
    int activationCount = 0;
    int terminationCount = 0;
    int beepCount = 0;

    void activate() override { ++activationCount; }
    void terminate() override { ++terminationCount; }
    void beep() override { ++beepCount; }
};

/// Holds handlers, each for as long as its token lives.
template <typename Base>
class MemoryHandlers {
public:
    using Handler = std::shared_ptr<const std::function<void()>>;

    [[nodiscard]] std::unique_ptr<Base> add(std::function<void()> handler) {
        auto shared = std::make_shared<const std::function<void()>>(std::move(handler));
        handlers_->insert(shared);
        return std::make_unique<Registration>(handlers_, std::move(shared));
    }

    /// From a copy, because a handler may remove any of them.
    void callAll() const {
        const auto handlers = *handlers_;
        for (const Handler& handler : handlers) {
            if (handlers_->contains(handler)) (*handler)();
        }
    }

    [[nodiscard]] std::size_t count() const { return handlers_->size(); }

private:
    using Handlers = std::shared_ptr<std::set<Handler>>;

    class Registration final : public Base {
    public:
        Registration(Handlers handlers, Handler handler) : handlers_(std::move(handlers)), handler_(std::move(handler)) {}
        ~Registration() override { handlers_->erase(handler_); }

    private:
        Handlers handlers_;
        Handler handler_;
    };

    Handlers handlers_ = std::make_shared<std::set<Handler>>();
};

/// The main screen as a test sets it.
class MemoryScreens final : public Screens {
public:
    std::optional<Screen> mainScreen{Screen{{{0, 0}, {1512, 982}}, {{0, 37}, {1512, 945}}}};

    [[nodiscard]] std::optional<Screen> main() const override { return mainScreen; }

    /// Reports that the screens have changed.
    void change() const { observers_.callAll(); }
    [[nodiscard]] std::size_t observerCount() const { return observers_.count(); }
    /// How many observers there have ever been.
    int registrationCount = 0;

    [[nodiscard]] std::unique_ptr<Observation> observeChanges(std::function<void()> handler) override {
        ++registrationCount;
        return observers_.add(std::move(handler));
    }

private:
    MemoryHandlers<Observation> observers_;
};

/// Lets a test press the mouse somewhere else.
class MemoryEventMonitor final : public EventMonitor {
public:
    /// Whether the system allows monitoring.
    bool isAvailable = true;

    /// A press outside this application's windows.
    void press() const { monitors_.callAll(); }
    [[nodiscard]] std::size_t monitorCount() const { return monitors_.count(); }

    [[nodiscard]] std::unique_ptr<Token> monitorMouseDowns(std::function<void()> handler) override {
        return isAvailable ? monitors_.add(std::move(handler)) : nullptr;
    }

private:
    MemoryHandlers<Token> monitors_;
};

}  // namespace ovin
