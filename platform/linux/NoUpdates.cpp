#include "platform/linux/NoUpdates.h"

namespace ovin {
namespace {

class Answer final : public UpdateFramework::Controller {
public:
    explicit Answer(Alerts& alerts) : alerts_(alerts) {}

    void checkForUpdates() override {
        alerts_.run({"Ovin does not update itself here",
                     "It was installed with your system’s software, and new versions come with that too."});
    }

private:
    Alerts& alerts_;
};

}  // namespace

std::unique_ptr<UpdateFramework::Controller> NoUpdates::start(Delegate) { return std::make_unique<Answer>(alerts_); }

}  // namespace ovin
