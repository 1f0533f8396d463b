#include "platform/NoUpdates.h"

namespace ovin {
namespace {

class Answer final : public UpdateFramework::Controller {
public:
    Answer(Alerts& alerts, Alert answer) : alerts_(alerts), answer_(std::move(answer)) {}

    void checkForUpdates() override { alerts_.run(answer_); }

private:
    Alerts& alerts_;
    const Alert answer_;
};

}  // namespace

std::unique_ptr<UpdateFramework::Controller> NoUpdates::start(Delegate) {
    return std::make_unique<Answer>(alerts_, answer_);
}

}  // namespace ovin
