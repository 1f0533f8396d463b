#include "platform/linux/accessibility/AccessibilityConsent.h"

#include <string_view>

namespace ovin {
namespace {

/// The setting that keeps the answer; absent before the question.
constexpr std::string_view answerKey = "OvinMayEnableAccessibility";

}  // namespace

AccessibilityConsent::AccessibilityConsent(AccessibilityBus& bus, UserDefaults& defaults, MainQueue& mainQueue)
    : bus_(bus), defaults_(defaults), mainQueue_(mainQueue), answer_(Answer::none) {
    if (defaults_.object(answerKey)) answer_ = defaults_.boolean(answerKey) ? Answer::agreed : Answer::refused;
}

AccessibilityConsent::~AccessibilityConsent() { bus_.observe(nullptr); }

void AccessibilityConsent::keep(bool isAgreed) {
    answer_ = isAgreed ? Answer::agreed : Answer::refused;
    (void)defaults_.set(answerKey, isAgreed);
}

void AccessibilityConsent::beginToAct() {
    bus_.observe([this, &queue = mainQueue_, alive = std::weak_ptr(alive_)] {
        queue.async([this, alive] {
            if (!alive.expired()) act();
        });
    });
    act();
}

void AccessibilityConsent::act() {
    if (!isGiven() || !bus_.hasAnswered()) return;
    if (bus_.wasSwitchedOff()) return keep(false);
    if (hasActed_ || bus_.isEnabled() || !bus_.isNeeded()) return;
    hasActed_ = true;
    bus_.enable();
}

}  // namespace ovin
