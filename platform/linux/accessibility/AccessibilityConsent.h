#pragma once

#include <atomic>
#include <memory>

#include "platform/MainQueue.h"
#include "platform/UserDefaults.h"
#include "platform/linux/accessibility/AccessibilityBus.h"

namespace ovin {

/// What the user has answered to the question whether this program may enable assistive programs. The answer lasts longer
/// than this process; that they are enabled does so only on some desktops.
class AccessibilityConsent {
public:
    /// All must outlive this object.
    AccessibilityConsent(AccessibilityBus& bus, UserDefaults& defaults, MainQueue& mainQueue);
    AccessibilityConsent(const AccessibilityConsent&) = delete;
    AccessibilityConsent& operator=(const AccessibilityConsent&) = delete;
    ~AccessibilityConsent();

    // Any thread.
    [[nodiscard]] bool hasAnswer() const { return answer_ != Answer::none; }
    [[nodiscard]] bool isGiven() const { return answer_ == Answer::agreed; }

    // Main thread only.

    /// Keeps an answer. If the settings cannot be written, the user is asked in the next session again.
    void keep(bool isAgreed);
    /// From now on, enables assistive programs once, where the user has agreed, they are disabled and a bar runs whose
    /// layout is read through them. Whoever disables them while this program runs takes the agreement back.
    void beginToAct();

private:
    enum class Answer { none, refused, agreed };

    void act();

    AccessibilityBus& bus_;
    UserDefaults& defaults_;
    MainQueue& mainQueue_;
    std::atomic<Answer> answer_;
    bool hasActed_ = false;
    /// Gone before this object is.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace ovin
